#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/owners.h"
#include "tests/driver/commands.h"
#include "tests/driver/dialogs.h"
#include "tests/driver/remote_list.h"
#include "tests/driver/wait.h"

/// A running Vellumor, driven from outside through its window. What does not happen in time throws
/// CDriverError.
class CAppDriver {
public:
    /// Starts the program and waits until its window with the list is shown.
    /// @param folder  the folder that it starts in; empty: ours.
    explicit CAppDriver(const std::string& executable, const std::string& folder = {});
    CAppDriver(const CAppDriver&) = delete;
    CAppDriver& operator=(const CAppDriver&) = delete;
    /// Ends the program, whatever it does.
    ~CAppDriver();

    [[nodiscard]] HWND Frame() const { return m_frame; }
    [[nodiscard]] HWND ToolBar() const { return ::GetDlgItem(m_frame, controls::kToolBar); }
    [[nodiscard]] HWND StatusBar() const { return ::GetDlgItem(m_frame, controls::kStatusBar); }
    [[nodiscard]] const CRemoteList& List() const { return *m_list; }

    [[nodiscard]] HANDLE Process() const { return m_process.Get(); }
    [[nodiscard]] DWORD ProcessId() const { return m_processId; }
    [[nodiscard]] bool IsRunning() const;
    [[nodiscard]] std::vector<DWORD> Threads() const;
    [[nodiscard]] std::size_t HandleCount() const;

    /// Posts a menu command to the main window, as another program would.
    void Post(unsigned command) const;
    /// Waits until everything posted so far has been handled. It also returns while a modal window is open.
    void Settle() const;

    [[nodiscard]] std::optional<CProgressDialog> ShownProgressDialog() const;
    [[nodiscard]] CProgressDialog WaitForProgressDialog() const;
    [[nodiscard]] std::optional<CMessageBox> ShownMessageBox() const;
    [[nodiscard]] CMessageBox WaitForMessageBox(DWORD patience = kPatience) const;
    /// Waits for the open popup menu's window.
    [[nodiscard]] HWND WaitForPopupMenu() const;

    /// Posts the closing message to the main window, without waiting for what that brings.
    void PostClose() const;
    /// Waits until the process has ended. @return its exit code.
    [[nodiscard]] DWORD WaitForExit(DWORD patience = kPatience) const;

private:
    void Start(const std::string& executable, const std::string& folder);
    void WaitForWindow();

    CUniqueHandle m_process;
    DWORD m_processId = 0;
    HWND m_frame = nullptr;
    std::unique_ptr<CRemoteList> m_list;  // goes before the process handle
};
