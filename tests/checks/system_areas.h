#pragma once

// Where the lists of the system and of installers stand, under HKEY_LOCAL_MACHINE.
inline constexpr char kFontsArea[] = R"(SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)";
inline constexpr char kFirewallArea[] =
    R"(SYSTEM\CurrentControlSet\Services\SharedAccess\Parameters\FirewallPolicy\StandardProfile\AuthorizedApplications\List)";
inline constexpr char kTracingArea[] = R"(SOFTWARE\Microsoft\Tracing)";
inline constexpr char kApplicationLogArea[] = R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application)";
inline constexpr char kServicesArea[] = R"(SYSTEM\CurrentControlSet\Services)";
inline constexpr char kSystemLogArea[] = R"(SYSTEM\CurrentControlSet\Services\Eventlog\System)";
inline constexpr char kTrustArea[] = R"(SYSTEM\CurrentControlSet\Services\WinTrust\SubjectPackages)";
inline constexpr char kMacrosArea[] =
    R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Explorer\WebView\TemplateMacros)";
inline constexpr char kInstallerFoldersArea[] =
    R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\Folders)";
inline constexpr char kAppPathsArea[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths)";
inline constexpr char kHelpArea[] = R"(SOFTWARE\Microsoft\Windows\Help)";
inline constexpr char kHtmlHelpArea[] = R"(SOFTWARE\Microsoft\Windows\Html Help)";
inline constexpr char kSharedDllsArea[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\SharedDlls)";
inline constexpr char kUninstallArea[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)";
inline constexpr char kArpCacheArea[] =
    R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache)";
