#include "analysis/category_driver.h"

#include "analysis/classes/class_checks.h"
#include "analysis/classes/software_checks.h"
#include "analysis/history/history_checks.h"
#include "analysis/system/system_checks.h"

namespace {

constexpr Check kFileExts{
    "choices-per-extension", "Explorer FileExts",
    "Choices that Explorer kept for file extensions and that are empty or lead nowhere.", &CheckFileExts};

constexpr Check kChecks[] = {
    kFileExts,
    {"commands-and-icons-of-classes", "HKEY_CLASSES_ROOT: shell, command and DefaultIcon subkeys",
     "Classes without content, without a command below \"shell\", or without an icon below \"DefaultIcon\".",
     &CheckClassKeys},
    {"cache-of-program-details", "App Management ARPCache", "Cached details of programs that are gone.",
     &CheckArpCache},
    {"usage-counters", "Explorer UserAssist Count", "Counters of how often programs were started.",
     &CheckUserAssist},
    {"last-visited-folders", "ComDlg32 LastVisitedMRU", "Folders last visited in file dialogs.",
     &CheckLastVisitedMru},
    {"opened-and-saved-files", "ComDlg32 OpenSaveMRU", "Files opened and saved in file dialogs.",
     &CheckOpenSaveMru},
    // Deliberate: this check runs twice, so its findings can stand twice in the list.
    kFileExts,
    {"open-with-lists", "OpenWithList subkeys of Explorer FileExts",
     "Programs that Explorer offers for file extensions.", &CheckFileExtsOpenWithList},
    {"recent-documents", "Explorer RecentDocs, its own values", "Documents opened recently.",
     &CheckRecentDocs},
    {"recent-documents-by-type", "subkeys of Explorer RecentDocs",
     "Documents opened recently, by their type.", &CheckRecentDocsByType},
    {"run-box", "Explorer RunMRU", "Commands typed into the Run box.", &CheckRunMru},
    {"remembered-windows", "Explorer StreamMRU", "Views remembered for folder windows.", &CheckStreamMru},
    {"wallpapers", "Explorer Wallpaper MRU", "Wallpapers used recently.", &CheckWallpaperMru},
    {"uninstall-entries", "Uninstall",
     "Uninstall entries that are empty, cannot uninstall, or refer to what is gone.", &CheckUninstallEntries},
    {"shared-modules", "SharedDlls", "Shared libraries that are counted though they are gone.",
     &CheckSharedDlls},
    {"help-files", "Windows Help", "Registered help files that are gone.", &CheckHelpFiles},
    {"installer-folders", "Installer Folders", "Folders that installers recorded and that are gone.",
     &CheckInstallerFolders},
    {"program-paths", "App Paths", "Registered program paths that are empty or lead to no program.",
     &CheckAppPaths},
    {"firewall-permissions", "firewall authorized applications list",
     "Programs that the firewall lets through though they are gone.", &CheckFirewallApplications},
    {"typed-addresses", "Internet Explorer TypedURLs", "Addresses typed into the browser.", &CheckTypedUrls},
    {"fonts", "Windows NT Fonts",
     "Fonts whose file is not in the fonts folder, or is named by a path of its own.", &CheckFonts},
    {"start-menu-order", "Explorer MenuOrder Start Menu Programs",
     "Start menu order kept for folders that are in no start menu.", &CheckStartMenuOrder},
    {"trace-folders", "Tracing", "Trace folders that are gone.", &CheckTracing},
    {"folder-view-templates", "Explorer WebView TemplateMacros", "Folder view templates whose file is gone.",
     &CheckTemplateMacros},
    {"installer-sources", "Classes Installer Products and Patches",
     "Sources that installers used last, whether or not they are still there.", &CheckInstallerSources},
    {"current-versions", "HKEY_CLASSES_ROOT: CurVer entries",
     "Classes whose current version is not named or not registered.", &CheckCurrentVersions},
    {"application-identifiers", "HKEY_CLASSES_ROOT: AppID",
     "Programs whose application identifier is not registered.", &CheckAppIds},
    {"browser-folders", "Internet Settings Cache Paths",
     "The browser's folders and start page that are gone.", &CheckBrowserFolders},
    {"media-trace-folders", "Tracing LccMedia", "Media trace folders that are gone.", &CheckMediaTracing},
    {"program-display-names", "ShellNoRoam MUICache", "Cached display names of programs that are gone.",
     &CheckMuiCache},
    {"services-and-event-sources", "Eventlog Application sources and services",
     "Services, event sources and trust packages whose file is gone.", &CheckServicesAndEventLogs},
    {"empty-file-types", "HKEY_CLASSES_ROOT: top-level keys", "File types that hold nothing at all.",
     &CheckEmptyFileTypes},
    {"content-types", "MIME Database Content Type",
     "Content types that are empty, or whose extension or class is not registered.", &CheckMimeTypes},
    {"cd-player-providers", "Applets DeluxeCD Providers",
     "Providers of the CD player whose logo file is gone.", &CheckCdProviders},
    {"file-type-links", "HKEY_CLASSES_ROOT: keys, further check",
     "File types without content, or whose type name is not registered.", &CheckFileTypeLinks},
    {"empty-software-keys", "Software keys of HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE",
     "Keys directly below \"Software\" that hold nothing at all.", &CheckSoftwareKeys},
    {"programs-started-at-logon", "Run keys",
     "Programs that start at logon and exist, and start entries without content.", &CheckRunEntries},
};

}  // namespace

std::span<const Check> CategoryChecks() { return kChecks; }

void RunCategoryChecks() {
    for (const Check& check : kChecks) RunCheck(check);
}
