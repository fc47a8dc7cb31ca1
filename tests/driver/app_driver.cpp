#include "tests/driver/app_driver.h"

#include <commctrl.h>

#include "tests/driver/process_info.h"
#include "tests/driver/window_access.h"

namespace {

constexpr DWORD kStartPatience = 30'000;  // milliseconds; the first window on a screen takes longest
constexpr DWORD kEndPatience = 5'000;

/// The main window: unowned and with a caption; null while it is not shown.
HWND FindFrame(DWORD processId) {
    for (const HWND window : TopWindowsOf(processId))
        if (::GetWindow(window, GW_OWNER) == nullptr && (StyleOf(window) & WS_CAPTION) == WS_CAPTION)
            return window;
    return nullptr;
}

HWND FindList(HWND frame) { return ::FindWindowExA(frame, nullptr, WC_LISTVIEWA, nullptr); }

}  // namespace

CAppDriver::CAppDriver(const std::string& executable, const std::string& folder) {
    Start(executable, folder);
    try {
        WaitForWindow();
    } catch (...) {
        ::TerminateProcess(m_process.Get(), 1);
        throw;
    }
}

CAppDriver::~CAppDriver() {
    m_list.reset();
    ::TerminateProcess(m_process.Get(), 1);
    ::WaitForSingleObject(m_process.Get(), kEndPatience);
}

void CAppDriver::Start(const std::string& executable, const std::string& folder) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    // Nothing is inherited: the desktop process, which the first window starts, would keep our output open.
    if (::CreateProcessA(executable.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                         folder.empty() ? nullptr : folder.c_str(), &startup, &process) == FALSE)
        throw CDriverError(executable + " cannot be started: error " + std::to_string(::GetLastError()));
    ::CloseHandle(process.hThread);
    m_process.Reset(process.hProcess);
    m_processId = process.dwProcessId;
}

void CAppDriver::WaitForWindow() {
    m_frame = WaitFor(
        "the main window",
        [this] {
            if (!IsRunning()) throw CDriverError("the program ended before it showed a window");
            return FindFrame(m_processId);
        },
        kStartPatience);
    const HWND list = WaitFor("the list", [this] { return FindList(m_frame); });
    m_list = std::make_unique<CRemoteList>(m_process.Get(), list);
    Settle();  // shown, but perhaps not placed yet
}

bool CAppDriver::IsRunning() const { return ::WaitForSingleObject(m_process.Get(), 0) == WAIT_TIMEOUT; }

std::vector<DWORD> CAppDriver::Threads() const { return ThreadsOf(m_processId); }

std::size_t CAppDriver::HandleCount() const { return HandleCountOf(m_processId); }

void CAppDriver::Post(unsigned command) const { ::PostMessageA(m_frame, WM_COMMAND, command, 0); }

void CAppDriver::Settle() const {
    // Posted messages are handled in order, so once the list has taken a value that is posted now, everything
    // before is done. The hover time is the list's own and means nothing to a list without hover selection.
    static int marker = 1000;
    ++marker;
    ::PostMessageA(m_list->Window(), LVM_SETHOVERTIME, 0, marker);
    WaitFor("the program to handle what was posted",
            [this] { return Ask(m_list->Window(), LVM_GETHOVERTIME) == marker; });
}

std::optional<CProgressDialog> CAppDriver::ShownProgressDialog() const {
    return FindProgressDialog(m_processId);
}

CProgressDialog CAppDriver::WaitForProgressDialog() const {
    return *WaitFor("the progress dialog", [this] { return ShownProgressDialog(); });
}

std::optional<CMessageBox> CAppDriver::ShownMessageBox() const { return FindMessageBox(m_processId); }

CMessageBox CAppDriver::WaitForMessageBox(DWORD patience) const {
    return *WaitFor(
        "a message box", [this] { return ShownMessageBox(); }, patience);
}

HWND CAppDriver::WaitForPopupMenu() const {
    return WaitFor("the popup menu", [this] { return FindPopupMenu(m_processId); });
}

void CAppDriver::PostClose() const { ::PostMessageA(m_frame, WM_CLOSE, 0, 0); }

DWORD CAppDriver::WaitForExit(DWORD patience) const {
    WaitFor(
        "the end of the program", [this] { return !IsRunning(); }, patience);
    DWORD exitCode = 0;
    ::GetExitCodeProcess(m_process.Get(), &exitCode);
    return exitCode;
}
