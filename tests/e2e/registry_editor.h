#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/owners.h"

constexpr char kEditor[] = "regedit.exe";

/// A registry value as it is stored.
struct Remembered {
    DWORD type = 0;
    std::string bytes;
};

/// What the registry editor remembers between two runs. Its key exists as long as this object does, unless a
/// test removes it.
class CEditorState {
public:
    CEditorState();
    CEditorState(const CEditorState&) = delete;
    CEditorState& operator=(const CEditorState&) = delete;
    ~CEditorState();

    /// Removes the remembered key.
    void Forget() const;
    /// Removes all that the editor remembers.
    void Remove() const;
    /// @return nothing when no key is remembered.
    [[nodiscard]] Remembered LastKey() const;
};

/// Registry editors started by a test. At the end every editor is ended, also those started by others.
class CEditors {
public:
    CEditors() = default;
    CEditors(const CEditors&) = delete;
    CEditors& operator=(const CEditors&) = delete;
    ~CEditors();

    /// Starts one and waits for its window.
    void Start();
    [[nodiscard]] int RunningOfStarted() const;

private:
    std::vector<CUniqueHandle> m_started;
};
