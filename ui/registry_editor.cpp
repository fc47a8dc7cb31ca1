#include "ui/registry_editor.h"

#include <windows.h>

#include "platform/host_services.h"
#include "registry/registry_access.h"

namespace {

constexpr char kEditorFileName[] = "regedit.exe";
// Deliberate: a fixed place, so that no program of the same name elsewhere is ever started with our rights.
constexpr char kEditorCommand[] = R"("C:\WINDOWS\regedit.exe")";
constexpr char kEditorState[] = R"(Software\Microsoft\Windows\CurrentVersion\Applets\Regedit)";
constexpr char kRememberedKey[] = "LastKey";

void EndRunningEditors() {
    for (const RunningProgram& program : SystemActions().ListPrograms())
        if (::lstrcmpiA(program.fileName.c_str(), kEditorFileName) == 0)
            SystemActions().EndProgram(program.processId);
}

bool RememberKey(const std::string& keyPath) {
    CUniqueKey state;
    if (OpenKey(HKEY_CURRENT_USER, kEditorState, kAllAccess, state) != ERROR_SUCCESS) return false;
    const auto* bytes = reinterpret_cast<const BYTE*>(keyPath.c_str());
    const auto size = static_cast<DWORD>(keyPath.size() + 1);
    return ::RegSetValueExA(state.Get(), kRememberedKey, 0, REG_SZ, bytes, size) == ERROR_SUCCESS;
}

}  // namespace

void OpenRegistryEditorAt(const std::string& keyPath) {
    EndRunningEditors();
    if (RememberKey(keyPath)) SystemActions().RunProgram(kEditorCommand, SW_SHOWMAXIMIZED);
}
