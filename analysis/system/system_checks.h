#pragma once

// Checks of the machine-wide lists in which the system and installers record files, folders and programs.

/// Fonts whose file is not in the fonts folder, or that name a file by its own path.
void CheckFonts();
/// Programs that the firewall lets through though they are gone.
void CheckFirewallApplications();
/// Trace folders that are gone.
void CheckTracing();
/// Event sources, services and trust providers whose file is gone.
void CheckServicesAndEventLogs();
/// Web view macros whose file is gone.
void CheckTemplateMacros();
/// Folders that installers recorded and that are gone.
void CheckInstallerFolders();
/// Registered program paths that are empty or lead to no program.
void CheckAppPaths();
/// Help files that are gone.
void CheckHelpFiles();
/// Shared modules that are counted though they are gone.
void CheckSharedDlls();
/// Uninstall entries that are empty, cannot uninstall anything, or refer to files that are gone.
void CheckUninstallEntries();
/// Cached program details without their record, or of programs that are gone.
void CheckArpCache();
