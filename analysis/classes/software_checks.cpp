#include "analysis/classes/software_checks.h"

#include <shlobj.h>
#include <shlwapi.h>

#include <string>

#include "analysis/check_walk.h"
#include "registry/file_reference.h"
#include "registry/file_reference_rules.h"
#include "registry/key_link.h"
#include "registry/key_tree.h"

namespace {

const CheckArea kRun = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)");
const CheckArea kUserSoftware = AreaAt(R"(\HKEY_CURRENT_USER\Software)");
const CheckArea kMachineSoftware = AreaAt(R"(\HKEY_LOCAL_MACHINE\Software)");
const CheckArea kMuiCache = AreaAt(R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Windows\ShellNoRoam\MUICache)");
const CheckArea kUrlHistory =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Internet Settings\Url History)");
const CheckArea kBrowserMain = AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Internet Explorer\Main)");
const CheckArea kMenuOrder = AreaAt(
    R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs)");

/// An area whose subkeys each name a file or folder in one value.
struct FolderValue {
    CheckArea area;
    const char* value;
};
const FolderValue kMediaTracing{AreaAt(R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Tracing\LccMedia)"),
                                "FileDirectory"};
const FolderValue kCdProviders{
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Applets\DeluxeCD\Providers)"),
    "ProviderLogo"};
const FolderValue kCachePaths{
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Internet Settings\Cache\Paths)"),
    "CachePath"};

const CheckArea kInstallerAreas[] = {
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Installer\Products)"),
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Installer\Patches)"),
    AreaAt(R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Installer\Products)"),
};
constexpr DWORD kInstallerNameBytes = 100;
constexpr DWORD kSourceDataBytes = 100;

void ReportMissingFolders(const FolderValue& row) {
    ForEachSubkey(row.area, [&row](const Subkey& entry) {
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (!key) return;
        const QueriedText folder = QueryText(key.Get(), row.value, kValueDataBytes);
        if (!folder.text.empty() && PathIsMissing(folder.text))
            entry.Report(reasons::kFileMissing, row.value, folder.text.c_str());
    });
}

/// Reports a value of one key that names a missing file or folder. @param key  where the value is read from.
void ReportMissingFolder(HKEY key, const CheckArea& area, const char* valueName) {
    PollCancel();
    ReportProgress(area.path);
    const QueriedText folder = QueryText(key, valueName, kValueDataBytes);
    if (!folder.text.empty() && PathIsMissing(folder.text))
        ReportUntimed(reasons::kFileMissing, area.path, valueName, folder.text.c_str());
}

void CheckInstallerSource(const Subkey& entry) {
    const CUniqueKey product = OpenForAll(entry.parent, entry.name);
    if (!product) return;
    const CUniqueKey list = OpenForAll(product.Get(), "SourceList");
    if (!list) return;
    const QueriedText source = QueryText(list.Get(), "LastUsedSource", kSourceDataBytes);
    // Deliberate: no file is tested. What stands behind the fifth character, where the text is cut, is empty
    // and so is never found: every source that can be read is reported.
    if (source.Succeeded()) entry.Report(reasons::kLastSource, "LastUsedSource", source.text.c_str());
}

void ReportEmptyTrees(const CheckArea& area, bool skipsPolicies) {
    ForEachSubkey(area, [skipsPolicies](const Subkey& entry) {
        const std::string name = entry.name;
        if (name == "Classes" || (skipsPolicies && name == "Policies")) return;
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (key && KeyTreeIsEmpty(key.Get(), entry.path, &PollCancel)) entry.Report(reasons::kNothingInTree);
    });
}

/// The two Start Menus' program folders; of one that the system does not know, an empty text.
struct StartMenus {
    std::string common;
    std::string user;

    [[nodiscard]] bool HoldNeither(const std::string& folder) const {
        return !Holds(common, folder) && !Holds(user, folder);
    }

private:
    [[nodiscard]] static bool Holds(const std::string& menu, const std::string& folder) {
        return !menu.empty() && ::PathFileExistsA((menu + "\\" + folder).c_str()) != FALSE;
    }
};

std::string SpecialFolder(int id) {
    char folder[MAX_PATH] = "";
    return ::SHGetSpecialFolderPathA(nullptr, folder, id, FALSE) != FALSE ? std::string(folder)
                                                                          : std::string();
}

void CheckMenuFolder(const StartMenus& menus, const Subkey& entry) {
    if (menus.HoldNeither(entry.name)) entry.Report(reasons::kMenuItemMissing, "", entry.name);
    // What lies behind a link is no part of the menu: keys from anywhere would be taken for its folders.
    CUniqueKey key;
    if (OpenKeyItself(entry.parent, entry.name, kAllAccess, key) != ERROR_SUCCESS) return;
    ForEachSubkeyOf(
        key.Get(), entry.path,
        [&menus, &entry](const Subkey& child) {
            if (!menus.HoldNeither(std::string(entry.name) + "\\" + child.name)) return;
            // The time is the first level's for its children too.
            ReportRow(child.path.c_str(), entry.writeTime.c_str(), "", child.name, reasons::kMenuItemMissing);
        },
        kInnerWalk);
}

}  // namespace

void CheckRunEntries() {
    ForEachValue(kRun, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        // Deliberate: it is the program that exists which is reported.
        const bool runsProgram =
            HoldsExe(value.Data()) && !PathIsMissing(std::string(KeepUpToExe(value.Data(), "")));
        const bool isEmpty = !value.HasName() && !value.HasData();
        if (runsProgram || isEmpty)
            ReportUntimed(isEmpty ? reasons::kEmptyRunEntry : reasons::kStartedAtLogon, kRun.path,
                          value.Name(), value.Data());
    });
}

void CheckSoftwareKeys() {
    ReportEmptyTrees(kUserSoftware, true);
    ReportEmptyTrees(kMachineSoftware, false);
}

void CheckMuiCache() {
    ForEachValue(kMuiCache, {kValueNameBytes, kValueDataBytes}, [](const CValueReader& value) {
        const std::string program = value.Name();
        if (program.find('@') == std::string::npos && !CommandFileExists(program))
            ReportUntimed(reasons::kModuleMissing, kMuiCache.path, value.Name(), value.Data());
    });
}

void CheckMediaTracing() { ReportMissingFolders(kMediaTracing); }
void CheckCdProviders() { ReportMissingFolders(kCdProviders); }

void CheckBrowserFolders() {
    ReportMissingFolders(kCachePaths);
    const CUniqueKey history = OpenForAll(kUrlHistory.root, kUrlHistory.subkey);
    if (!history) return;
    ReportMissingFolder(history.Get(), kUrlHistory, "Directory");
    // Deliberate: the local page is read from the history key, and only where its own key opens too.
    if (OpenForAll(kBrowserMain.root, kBrowserMain.subkey))
        ReportMissingFolder(history.Get(), kBrowserMain, "Local Page");
}

void CheckInstallerSources() {
    for (const CheckArea& area : kInstallerAreas)
        ForEachSubkey(area, &CheckInstallerSource, {R"(\SourceList)", kInstallerNameBytes});
}

void CheckStartMenuOrder() {
    const StartMenus menus{SpecialFolder(CSIDL_COMMON_PROGRAMS), SpecialFolder(CSIDL_PROGRAMS)};
    ForEachSubkey(kMenuOrder, [&menus](const Subkey& entry) { CheckMenuFolder(menus, entry); });
}
