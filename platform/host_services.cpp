#include "platform/host_services.h"

#include <shellapi.h>
#include <tlhelp32.h>

#include "platform/command_line_rules.h"
#include "platform/folder_tree.h"
#include "platform/owners.h"

namespace {

CSystemActions g_systemActions;
CSystemActions* g_actions = &g_systemActions;

// Every right to a process. Windows XP refuses the rights that came after it.
constexpr DWORD kProcessFullAccess = 0x1FFFFF;
constexpr DWORD kProcessFullAccessXp = 0x1F0FFF;
constexpr DWORD kEndPatience = 2000;  // milliseconds

using HtmlHelpProc = HWND(WINAPI*)(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);
constexpr UINT kHelpDisplayTopic = 0;

HtmlHelpProc LoadHelpViewer() {
    // By its full path: a library of that name in our own folder is nothing to load with an administrator's
    // rights.
    char folder[MAX_PATH] = "";
    const UINT length = ::GetSystemDirectoryA(folder, sizeof folder);
    if (length == 0 || length >= sizeof folder) return nullptr;
    const HMODULE library = ::LoadLibraryA((std::string(folder, length) + "\\hhctrl.ocx").c_str());
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
        programs.push_back({entry.szExeFile, entry.th32ProcessID, entry.th32ParentProcessID});
    return programs;
}

void CSystemActions::EndProgram(DWORD processId) {
    CUniqueHandle process(::OpenProcess(kProcessFullAccess, FALSE, processId));
    if (!process) process.Reset(::OpenProcess(kProcessFullAccessXp, FALSE, processId));
    if (!process || ::TerminateProcess(process.Get(), 0) == FALSE) return;
    // A program that is started next may look for this one's window.
    ::WaitForSingleObject(process.Get(), kEndPatience);
}

UINT CSystemActions::RunProgram(const char* commandLine, int show) {
    // With our rights, nothing is started that the system would have to look for.
    if (!NamesProgramInFull(commandLine)) return ERROR_PATH_NOT_FOUND;  // as of a program that is not there
    return ::WinExec(commandLine, static_cast<UINT>(show));
}

int CSystemActions::OpenWithShell(const char* target) {
    const HINSTANCE answer = ::ShellExecuteA(nullptr, "open", target, nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<INT_PTR>(answer));
}

void CSystemActions::Beep() { ::MessageBeep(0); }

void CSystemActions::ShowHelp(const char* file) {
    static const HtmlHelpProc viewer = LoadHelpViewer();
    if (viewer != nullptr) viewer(nullptr, file, kHelpDisplayTopic, 0);
}

int CSystemActions::ShowMessage(HWND owner, const char* text, const char* caption, UINT flags) {
    return ::MessageBoxA(owner, text, caption, flags);
}

void CSystemActions::EmptyFolder(const std::string& folder) { DeleteFolderContents(folder); }

LSTATUS CSystemActions::SaveHive(HKEY hive, const char* file) { return ::RegSaveKeyA(hive, file, nullptr); }

LSTATUS CSystemActions::ReplaceHive(HKEY hive, const char* newFile, const char* oldFile) {
    return ::RegReplaceKeyA(hive, nullptr, newFile, oldFile);
}

std::string CSystemActions::DeviceOfDrive(const char* drive) {
    char device[MAX_PATH] = "";
    if (::QueryDosDeviceA(drive, device, sizeof device) == 0) return {};
    return device;  // the first of several names: the one in force
}

bool CSystemActions::IsAdministrator() {
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    PSID administrators = nullptr;
    if (::AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0,
                                   0, 0, 0, 0, &administrators) == FALSE)
        return false;
    BOOL isMember = FALSE;
    const BOOL isKnown = ::CheckTokenMembership(nullptr, administrators, &isMember);
    ::FreeSid(administrators);
    return isKnown != FALSE && isMember != FALSE;
}

bool CSystemActions::RestartSystem() { return ::ExitWindowsEx(EWX_REBOOT, 0) != FALSE; }
