#include "analysis/category_driver.h"

#include "analysis/classes/class_checks.h"
#include "analysis/classes/software_checks.h"
#include "analysis/history/history_checks.h"
#include "analysis/system/system_checks.h"

namespace {

constexpr CategoryCheck kChecks[] = {
    {"Explorer FileExts", &CheckFileExts},
    {"HKEY_CLASSES_ROOT: shell, command and DefaultIcon subkeys", &CheckClassKeys},
    {"App Management ARPCache", &CheckArpCache},
    {"Explorer UserAssist Count", &CheckUserAssist},
    {"ComDlg32 LastVisitedMRU", &CheckLastVisitedMru},
    {"ComDlg32 OpenSaveMRU", &CheckOpenSaveMru},
    // Deliberate: this check runs twice, so its findings can stand twice in the list.
    {"Explorer FileExts", &CheckFileExts},
    {"OpenWithList subkeys of Explorer FileExts", &CheckFileExtsOpenWithList},
    {"Explorer RecentDocs, its own values", &CheckRecentDocs},
    {"subkeys of Explorer RecentDocs", &CheckRecentDocsByType},
    {"Explorer RunMRU", &CheckRunMru},
    {"Explorer StreamMRU", &CheckStreamMru},
    {"Explorer Wallpaper MRU", &CheckWallpaperMru},
    {"Uninstall", &CheckUninstallEntries},
    {"SharedDlls", &CheckSharedDlls},
    {"Windows Help", &CheckHelpFiles},
    {"Installer Folders", &CheckInstallerFolders},
    {"App Paths", &CheckAppPaths},
    {"firewall authorized applications list", &CheckFirewallApplications},
    {"Internet Explorer TypedURLs", &CheckTypedUrls},
    {"Windows NT Fonts", &CheckFonts},
    {"Explorer MenuOrder Start Menu Programs", &CheckStartMenuOrder},
    {"Tracing", &CheckTracing},
    {"Explorer WebView TemplateMacros", &CheckTemplateMacros},
    {"Classes Installer Products and Patches", &CheckInstallerSources},
    {"HKEY_CLASSES_ROOT: CurVer entries", &CheckCurrentVersions},
    {"HKEY_CLASSES_ROOT: AppID", &CheckAppIds},
    {"Internet Settings Cache Paths", &CheckBrowserFolders},
    {"Tracing LccMedia", &CheckMediaTracing},
    {"ShellNoRoam MUICache", &CheckMuiCache},
    {"Eventlog Application sources and services", &CheckServicesAndEventLogs},
    {"HKEY_CLASSES_ROOT: top-level keys", &CheckEmptyFileTypes},
    {"MIME Database Content Type", &CheckMimeTypes},
    {"Applets DeluxeCD Providers", &CheckCdProviders},
    {"HKEY_CLASSES_ROOT: keys, further check", &CheckFileTypeLinks},
    {"Software keys of HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE", &CheckSoftwareKeys},
    {"Run keys", &CheckRunEntries},
};

}  // namespace

std::span<const CategoryCheck> CategoryChecks() { return kChecks; }

void RunCategoryChecks() {
    for (const CategoryCheck& place : kChecks) place.check();
}
