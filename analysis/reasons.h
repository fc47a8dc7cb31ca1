#pragma once

/// Why a row is in the list, in plain words. A type of its own, so that it is not taken for a row's other
/// texts.
struct Reason {
    const char* text;
};

namespace reasons {

// What a row names is gone.
inline constexpr Reason kFileMissing{"It names a file or folder that does not exist."};
inline constexpr Reason kModuleMissing{"It names a program or library file that does not exist."};
inline constexpr Reason kSystemFileMissing{"It names a system file that does not exist."};
inline constexpr Reason kFontMissing{"The font's file is not in the fonts folder."};
inline constexpr Reason kClassMissing{"It names a class that is not registered."};
inline constexpr Reason kProgIdMissing{"It names a program identifier that is not registered."};
inline constexpr Reason kAppIdMissing{"It names an application identifier that is not registered."};
inline constexpr Reason kTypeLibMissing{"It names a type library that is not registered."};
inline constexpr Reason kFileTypeMissing{"It names a file type that is not registered."};
inline constexpr Reason kCurrentVersionMissing{"It names no current version, or one that is not registered."};
inline constexpr Reason kMenuItemMissing{"No start menu has a folder or item of this name."};
inline constexpr Reason kCachedPathMissing{"It names a program that does not exist, or by too long a path."};

// There is nothing in it.
inline constexpr Reason kNothingInKey{"The key has neither values nor subkeys."};
inline constexpr Reason kNothingInTree{"There are no data in the key, nor in any key below it."};
inline constexpr Reason kNoSubkeys{"The key has no subkeys."};
inline constexpr Reason kNoContent{"The key has no subkeys, and its default value is missing or empty."};
inline constexpr Reason kNoData{"The value is empty."};
inline constexpr Reason kNoDefault{"The key has no default value."};
inline constexpr Reason kEmptyDefault{"The key's default value is missing or empty."};
inline constexpr Reason kNoCommand{"No verb below the key has a command."};
inline constexpr Reason kNoProgramList{"The key's list of program identifiers is empty."};
inline constexpr Reason kNoUninstallCommand{"It tells no way to uninstall, and is no part of the system."};
inline constexpr Reason kNoCacheRecord{"It lacks the record that it is there for."};

// Clutter, whether or not it is dead.
inline constexpr Reason kHistory{"It is an entry of a history list; nothing else was tested."};
inline constexpr Reason kUsageCounter{"It is a usage counter; nothing else was tested."};
inline constexpr Reason kLastSource{"It is the source last used by an installer; nothing else was tested."};
inline constexpr Reason kStartedAtLogon{"It starts at logon a program that exists; keep it if you want it."};
inline constexpr Reason kEmptyRunEntry{"It starts nothing at logon: name and data are empty."};
inline constexpr Reason kFontByPath{"The font's file exists, but is named by a path of its own."};

}  // namespace reasons
