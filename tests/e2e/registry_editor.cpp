#include "tests/e2e/registry_editor.h"

#include <shlwapi.h>

#include <algorithm>

#include "tests/driver/process_info.h"
#include "tests/driver/wait.h"
#include "tests/driver/window_access.h"

namespace {

constexpr char kState[] = R"(Software\Microsoft\Windows\CurrentVersion\Applets\Regedit)";
constexpr char kLastKey[] = "LastKey";
constexpr char kProgram[] = R"(C:\windows\regedit.exe)";
constexpr DWORD kEndPatience = 5000;  // milliseconds

}  // namespace

CEditorState::CEditorState() {
    CUniqueKey key;
    if (::RegCreateKeyA(HKEY_CURRENT_USER, kState, key.Receive()) != ERROR_SUCCESS)
        throw CDriverError("the registry editor's key cannot be made");
}

CEditorState::~CEditorState() { Forget(); }

void CEditorState::Forget() const { ::SHDeleteValueA(HKEY_CURRENT_USER, kState, kLastKey); }

void CEditorState::Remove() const { ::SHDeleteKeyA(HKEY_CURRENT_USER, kState); }

Remembered CEditorState::LastKey() const {
    Remembered remembered;
    char bytes[2048] = "";
    DWORD size = sizeof bytes;
    if (::SHGetValueA(HKEY_CURRENT_USER, kState, kLastKey, &remembered.type, bytes, &size) != ERROR_SUCCESS)
        return {};
    remembered.bytes.assign(bytes, size);
    return remembered;
}

CEditors::~CEditors() {
    for (const DWORD id : ProcessesNamed(kEditor)) {
        const CUniqueHandle process(::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
        ::TerminateProcess(process.Get(), 1);
        ::WaitForSingleObject(process.Get(), kEndPatience);
    }
}

void CEditors::Start() {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (::CreateProcessA(kProgram, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process) == FALSE)
        throw CDriverError("the registry editor cannot be started");
    ::CloseHandle(process.hThread);
    m_started.emplace_back(process.hProcess);
    WaitFor("the registry editor's window", [&] { return !TopWindowsOf(process.dwProcessId).empty(); });
}

int CEditors::RunningOfStarted() const {
    return static_cast<int>(std::ranges::count_if(m_started, [](const CUniqueHandle& process) {
        return ::WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT;
    }));
}
