#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The key that a repair looks at: root name and subkey path as they stand in the entry.
struct EntryKey {
    std::string_view rootName;
    std::string_view subkeyPath;
};

/// What a repair removes: the path of a key below the entry's root. Nothing: the entry is not of that kind.
using Unit = std::optional<std::string>;

// For each kind of entry, the key that has to go with it. Patterns are compared letter case included, as the
// checks write them. A unit always contains the entry's own key or is that key; where a path has the pattern
// but not the key that the repair stands for (a class key above DefaultIcon, for one), the entry is not of
// that kind, so that a key made to look like it takes no other key with it.

/// A class key ("...Classes\CLSID\{...}"), whatever stands behind it.
[[nodiscard]] Unit ClsidUnit(const EntryKey& key);
/// A type library's key ("...Classes\TypeLib\{...}").
[[nodiscard]] Unit TypeLibUnit(const EntryKey& key);
/// The class key whose DefaultIcon subkey the entry is in.
[[nodiscard]] Unit DefaultIconClassUnit(const EntryKey& key);
/// The class key whose shell subkey holds the command that the entry is in.
[[nodiscard]] Unit ShellCommandClassUnit(const EntryKey& key);
/// A component of a user's installations.
[[nodiscard]] Unit InstallerComponentUnit(const EntryKey& key);
/// An application's key under "App Paths".
[[nodiscard]] Unit AppPathUnit(const EntryKey& key);
/// A source of the application event log.
[[nodiscard]] Unit EventlogSourceUnit(const EntryKey& key);
/// A product's key under "Uninstall".
[[nodiscard]] Unit UninstallUnit(const EntryKey& key);
/// A part of the start menu's order.
[[nodiscard]] Unit MenuOrderUnit(const EntryKey& key);
/// A record of the list of installed programs.
[[nodiscard]] Unit ArpCacheUnit(const EntryKey& key);
/// Any key of the user's or the machine's "Software".
[[nodiscard]] Unit SoftwareUnit(const EntryKey& key);
/// A class, type library or interface under HKEY_CLASSES_ROOT, or the entry's own key where it is none of
/// them.
[[nodiscard]] Unit ComFamilyUnit(const EntryKey& key);
/// An extension, or its list of programs, of the explorer's history.
[[nodiscard]] Unit FileExtsUnit(const EntryKey& key);
/// A list of recent documents.
[[nodiscard]] Unit RecentDocsUnit(const EntryKey& key);

/// A key path cut at its last backslash: parent (empty: the root) and name.
struct ParentAndName {
    std::string parent;
    std::string name;
};
[[nodiscard]] ParentAndName SplitLastKey(std::string_view path);
