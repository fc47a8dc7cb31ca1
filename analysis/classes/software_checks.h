#pragma once

// Checks of software settings: start-up entries, settings keys, folders that programs remember, installers.

/// Entries of the Run list: those without name and data, and those whose program exists.
void CheckRunEntries();
/// Keys directly under Software, of the user and the machine, that hold nothing at all.
void CheckSoftwareKeys();
/// Programs whose display name is cached though they are gone.
void CheckMuiCache();
/// Media tracing folders that are gone.
void CheckMediaTracing();
/// CD player providers whose logo file is gone.
void CheckCdProviders();
/// The browser's cache folders, history folder and local page that are gone.
void CheckBrowserFolders();
/// Remembered installation sources.
void CheckInstallerSources();
/// Start-menu order kept for folders that are in no Start Menu.
void CheckStartMenuOrder();
