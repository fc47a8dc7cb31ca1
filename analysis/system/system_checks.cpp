#include "analysis/system/system_checks.h"

#include <shlobj.h>
#include <shlwapi.h>

#include <cstring>
#include <string>

#include "analysis/check_walk.h"
#include "registry/file_reference.h"

namespace {

const CheckArea kFonts = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)");
const CheckArea kFirewall = AreaAt(
    R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\SharedAccess\Parameters\FirewallPolicy\StandardProfile\AuthorizedApplications\List)");
const CheckArea kTracing = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Tracing)");
const CheckArea kApplicationEvents =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\Eventlog\Application)");
const CheckArea kServices = AreaAt(R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services)");
const CheckArea kSystemEvents =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\Eventlog\System)");
const CheckArea kTrustPackages =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\WinTrust\SubjectPackages)");
const CheckArea kTemplateMacros = AreaAt(
    R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Explorer\WebView\TemplateMacros)");
const CheckArea kInstallerFolders =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\Folders)");
const CheckArea kHelp = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\Help)");
const CheckArea kHtmlHelp = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\Html Help)");
const CheckArea kSharedDlls =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\SharedDlls)");

constexpr DWORD kTraceFolderBytes = 100;

/// Reports one value of every subkey where its data are dead. The value's name counts with its letter case.
void ReportDeadValues(Reason reason, const CheckArea& area, const char* valueName, DWORD dataBytes,
                      bool (*isDead)(const char*)) {
    ForEachSubkey(area, [=](const Subkey& entry) {
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (!key) return;
        const QueriedText value = QueryTextExactly(key.Get(), valueName, dataBytes, &PollCancel);
        if (value.Succeeded() && isDead(value.text.c_str()))
            entry.Report(reason, valueName, value.text.c_str());
    });
}

bool IsDeadCommand(const char* data) { return !CommandFileExists(data); }
bool IsDeadSystemFile(const char* data) { return !SystemFileExists(data); }
bool IsDeadMessageFile(const char* data) {
    return std::strstr(data, "System32") == nullptr && !CommandFileExists(data);
}
bool IsDeadPackage(const char* data) { return data[0] != '\0' && PathIsMissing(data); }

bool FontIsMissing(const std::string& folder, const char* file) {
    char path[MAX_PATH] = "";
    ::lstrcpynA(path, folder.c_str(), sizeof path);
    return ::PathAppendA(path, file) == FALSE || PathIsMissing(path);
}

std::string FontsFolder() {
    char folder[MAX_PATH] = "";
    return ::SHGetFolderPathA(nullptr, CSIDL_FONTS, nullptr, 0, folder) == S_OK ? std::string(folder)
                                                                                : std::string();
}

void CheckMacro(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    ForEachValueOf(key.Get(), {kValueNameBytes, kValueDataBytes}, [&entry](const CValueReader& value) {
        if (!value.HasName() && value.HasData() && !CommandFileExists(value.Data()))
            entry.Report(reasons::kModuleMissing, "", value.Data());
    });
}

void CheckHtmlHelpFile(const CValueReader& value) {
    constexpr std::string_view kFolder = "Folder:";
    if (!value.HasName() || !value.HasData()) return;
    std::string path = std::string(value.Data()) + "\\" + value.Name();
    if (const std::size_t found = path.find(kFolder); found != std::string::npos)
        path.erase(0, found + kFolder.size());
    // Deliberate: two tests, each with a row of its own.
    if (PathIsMissing(path)) ReportUntimed(reasons::kFileMissing, kHtmlHelp.path, value.Name(), value.Data());
    if (!CommandFileExists(path))
        ReportUntimed(reasons::kFileMissing, kHtmlHelp.path, value.Name(), value.Data());
}

}  // namespace

void CheckFonts() {
    ForEachValue(kFonts, {kValueNameBytes, kValueDataBytes},
                 [folder = FontsFolder()](const CValueReader& value) {
                     if (value.Type() != REG_SZ) return;
                     if (FontIsMissing(folder, value.Data()))
                         ReportUntimed(reasons::kFontMissing, kFonts.path, value.Name(), value.Data());
                     // Deliberate: a font file named by a path of its own is reported because it is there.
                     if (!PathIsMissing(value.Data()))
                         ReportUntimed(reasons::kFontByPath, kFonts.path, value.Name(), value.Data());
                 });
}

void CheckFirewallApplications() {
    ForEachValue(kFirewall, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        if (value.Type() == REG_SZ && !CommandFileExists(value.Name()))
            ReportUntimed(reasons::kModuleMissing, kFirewall.path, value.Name(), value.Data());
    });
}

void CheckTracing() {
    ReportDeadValues(reasons::kFileMissing, kTracing, "FileDirectory", kTraceFolderBytes, &PathIsMissing);
}

void CheckServicesAndEventLogs() {
    ReportDeadValues(reasons::kModuleMissing, kApplicationEvents, "EventMessageFile", kValueDataBytes,
                     &IsDeadCommand);
    ReportDeadValues(reasons::kSystemFileMissing, kServices, "ImagePath", kValueDataBytes, &IsDeadSystemFile);
    ReportDeadValues(reasons::kModuleMissing, kSystemEvents, "EventMessageFile", kValueDataBytes,
                     &IsDeadMessageFile);
    ReportDeadValues(reasons::kFileMissing, kTrustPackages, "$DLL", kValueDataBytes, &IsDeadPackage);
}

void CheckTemplateMacros() { ForEachSubkey(kTemplateMacros, &CheckMacro); }

void CheckInstallerFolders() {
    ForEachValue(kInstallerFolders, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        if (PathIsMissing(value.Name()))
            ReportUntimed(reasons::kFileMissing, kInstallerFolders.path, value.Name(), value.Data());
    });
}

void CheckHelpFiles() {
    ForEachValue(kHelp, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        if (!CommandFileExists(std::string(value.Data()) + "\\" + value.Name()))
            ReportUntimed(reasons::kFileMissing, kHelp.path, value.Name(), value.Data());
    });
    ForEachValue(kHtmlHelp, {kValueNameBytes, kValueDataBytes}, &CheckHtmlHelpFile);
}

void CheckSharedDlls() {
    ForEachValue(kSharedDlls, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        if (value.HasName() && !ModuleFileExists(value.Name()))
            ReportUntimed(reasons::kModuleMissing, kSharedDlls.path, value.Name());
    });
}
