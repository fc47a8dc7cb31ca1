#include "analysis/category_driver.h"

namespace {

constexpr void (*kNotBuiltYet)() = nullptr;

constexpr CategoryCheck kChecks[] = {
    {"CheckFileExts: Explorer FileExts", kNotBuiltYet},
    {"HKEY_CLASSES_ROOT: shell, command and DefaultIcon subkeys", kNotBuiltYet},
    {"CheckArpCache: App Management ARPCache", kNotBuiltYet},
    {"CheckUserAssist: Explorer UserAssist Count", kNotBuiltYet},
    {"CheckLastVisitedMru: ComDlg32 LastVisitedMRU", kNotBuiltYet},
    {"CheckOpenSaveMru: ComDlg32 OpenSaveMRU", kNotBuiltYet},
    // Deliberate: this check runs twice, so its findings can stand twice in the list.
    {"CheckFileExts: Explorer FileExts", kNotBuiltYet},
    {"CheckFileExtsOpenWithList: OpenWithList subkeys of Explorer FileExts", kNotBuiltYet},
    {"CheckRecentDocs: Explorer RecentDocs, its own values", kNotBuiltYet},
    {"CheckRecentDocsByType: subkeys of Explorer RecentDocs", kNotBuiltYet},
    {"CheckRunMru: Explorer RunMRU", kNotBuiltYet},
    {"CheckStreamMru: Explorer StreamMRU", kNotBuiltYet},
    {"CheckWallpaperMru: Explorer Wallpaper MRU", kNotBuiltYet},
    {"CheckUninstallEntries: Uninstall", kNotBuiltYet},
    {"CheckSharedDlls: SharedDlls", kNotBuiltYet},
    {"CheckHelpFiles: Windows Help", kNotBuiltYet},
    {"CheckInstallerFolders: Installer Folders", kNotBuiltYet},
    {"CheckAppPaths: App Paths", kNotBuiltYet},
    {"CheckFirewallApplications: firewall authorized applications list", kNotBuiltYet},
    {"CheckTypedUrls: Internet Explorer TypedURLs", kNotBuiltYet},
    {"CheckFonts: Windows NT Fonts", kNotBuiltYet},
    {"Explorer MenuOrder Start Menu Programs", kNotBuiltYet},
    {"CheckTracing: Tracing", kNotBuiltYet},
    {"CheckTemplateMacros: Explorer WebView TemplateMacros", kNotBuiltYet},
    {"Classes Installer Products and Patches", kNotBuiltYet},
    {"HKEY_CLASSES_ROOT: CurVer entries", kNotBuiltYet},
    {"HKEY_CLASSES_ROOT: AppID", kNotBuiltYet},
    {"Internet Settings Cache Paths", kNotBuiltYet},
    {"Tracing LccMedia", kNotBuiltYet},
    {"ShellNoRoam MUICache", kNotBuiltYet},
    {"CheckServicesAndEventLogs: Eventlog Application sources and services", kNotBuiltYet},
    {"HKEY_CLASSES_ROOT: top-level keys", kNotBuiltYet},
    {"MIME Database Content Type", kNotBuiltYet},
    {"Applets DeluxeCD Providers", kNotBuiltYet},
    {"HKEY_CLASSES_ROOT: keys, further check", kNotBuiltYet},
    {"Software keys of HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE", kNotBuiltYet},
    {"Run keys", kNotBuiltYet},
};

}  // namespace

std::span<const CategoryCheck> CategoryChecks() { return kChecks; }

void RunCategoryChecks() {
    for (const CategoryCheck& place : kChecks)
        if (place.check != nullptr) place.check();
}
