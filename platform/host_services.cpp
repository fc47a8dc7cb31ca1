#include "platform/host_services.h"

#include <tlhelp32.h>

#include "platform/owners.h"

namespace {

CSystemActions g_systemActions;
CSystemActions* g_actions = &g_systemActions;

/// Every right to a process in the sense of Windows XP and of later systems.
constexpr DWORD kProcessFullAccess = 0x1FFFFF;

using HtmlHelpProc = HWND(WINAPI*)(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);
constexpr UINT kHelpDisplayTopic = 0;

HtmlHelpProc LoadHelpViewer() {
    const HMODULE library = ::LoadLibraryA("hhctrl.ocx");
    if (library == nullptr) return nullptr;
    return reinterpret_cast<HtmlHelpProc>(reinterpret_cast<void*>(::GetProcAddress(library, "HtmlHelpA")));
}

}  // namespace

CSystemActions& SystemActions() { return *g_actions; }

void SetSystemActions(CSystemActions* actions) {
    g_actions = actions != nullptr ? actions : &g_systemActions;
}

std::vector<RunningProgram> CSystemActions::ListPrograms() {
    std::vector<RunningProgram> programs;
    const CUniqueFile snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot) return programs;
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32First(snapshot.Get(), &entry); more != FALSE;
         more = ::Process32Next(snapshot.Get(), &entry))
        programs.push_back({entry.szExeFile, entry.th32ProcessID});
    return programs;
}

void CSystemActions::EndProgram(DWORD processId) {
    const CUniqueHandle process(::OpenProcess(kProcessFullAccess, FALSE, processId));
    if (process) ::TerminateProcess(process.Get(), 0);
}

UINT CSystemActions::RunProgram(const char* commandLine, int show) {
    return ::WinExec(commandLine, static_cast<UINT>(show));
}

void CSystemActions::ShowHelp(const char* file) {
    static const HtmlHelpProc viewer = LoadHelpViewer();
    if (viewer != nullptr) viewer(nullptr, file, kHelpDisplayTopic, 0);
}
