#pragma once

// Checks of the COM registration under HKEY_CLASSES_ROOT, one stage of the analysis each. They read names and
// data whole, whatever their size.

/// What the subkeys of every class name: server and handler modules, icons, program identifiers.
void CheckClassSubkeys();
/// Empty class keys, and the ProgID, VersionIndependentProgID and AppID links of every class.
void CheckClassLinks();
/// Empty type libraries, and the help folders and modules of their versions.
void CheckTypeLibraries();
/// Top-level keys without content, and their class links.
void CheckClassesRootKeys();
/// The type library link of every class.
void CheckClassTypeLibLinks();
/// What every interface names: type library, proxy classes, base interface.
void CheckInterfaces();
