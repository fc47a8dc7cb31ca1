#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "platform/owners.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

using Check = void (*)();

/// While it lives, this process finds an empty registry: a current user, a machine, and classes that are the
/// machine's Software\Classes as on a real system. The keys are real ones, and everything in them is removed
/// at the end.
class CScratchRegistry {
public:
    CScratchRegistry();
    CScratchRegistry(const CScratchRegistry&) = delete;
    CScratchRegistry& operator=(const CScratchRegistry&) = delete;
    ~CScratchRegistry();

    /// Makes a key with the keys above it, or opens it; the handle stays open as long as this object lives.
    /// @param path  below the root; "" for the root itself.
    HKEY Add(HKEY root, const std::string& path);
    /// The same with a text value, stored with its terminator.
    HKEY AddText(HKEY root, const std::string& path, const std::string& name, const std::string& text);
    /// Lets everybody open a key for reading alone.
    void MakeReadOnly(HKEY key) { m_key.Restrict(key, KEY_READ); }
    /// Lets nobody open a key.
    void Lock(HKEY key) { m_key.Restrict(key, 0); }

private:
    CScratchKey m_key;
    HKEY m_user, m_machine, m_classes;
};

/// A key of the real registry that may exist already, with keys and values that a test puts into it. What was
/// there before stays; what was added is removed at the end, the key with it where it did not exist.
class CAreaKey {
public:
    CAreaKey(HKEY root, const std::string& subkey);
    CAreaKey(const CAreaKey&) = delete;
    CAreaKey& operator=(const CAreaKey&) = delete;
    ~CAreaKey();

    [[nodiscard]] HKEY Get() const { return m_key.Get(); }
    /// Makes a subkey that must not exist yet.
    HKEY Add(const std::string& name);
    /// Sets a value that must not exist yet.
    void AddText(const std::string& name, const std::string& text);

private:
    CUniqueKey m_created;  // the topmost key that had to be made
    CUniqueKey m_key;
    std::vector<CUniqueKey> m_subkeys;
    std::vector<std::string> m_values;
};

/// A check's rows as lines "key|time|value name|data", where the time is "timed" or empty, and a null slot of
/// the last two reads as an empty text. With key paths given, only the rows that lie at or below one of them.
[[nodiscard]] std::string RowsOf(Check check, std::initializer_list<std::string> under = {});
/// The same with the write times themselves.
[[nodiscard]] std::string TimedRowsOf(Check check, std::initializer_list<std::string> under = {});
/// The rows that a view has recorded, as such lines.
[[nodiscard]] std::string RowLines(const CRecordingView& view);

/// The lines of a list, as the functions above return them.
[[nodiscard]] std::string Lines(std::initializer_list<std::string> lines);

/// Runs a check that is cancelled at its first row, and demands that it ends with one cancel message and
/// without another row. @return the rows
[[nodiscard]] std::string RowsWhenCanceledAtFirstRow(Check check);

/// Demands that a check that is cancelled beforehand adds no row, and ends with its one cancel message.
void DemandNothingAfterCancel(Check check);
