#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// One predefined root: its long name and the number that its predefined handle has on 32-bit Windows.
struct RootKeyRow {
    std::string_view name;
    std::uint32_t handle;
};

/// The seven predefined roots, in the order in which they are searched.
inline constexpr RootKeyRow kRootKeyTable[] = {
    {"HKEY_CLASSES_ROOT", 0x80000000},     {"HKEY_CURRENT_USER", 0x80000001},
    {"HKEY_LOCAL_MACHINE", 0x80000002},    {"HKEY_USERS", 0x80000003},
    {"HKEY_PERFORMANCE_DATA", 0x80000004}, {"HKEY_CURRENT_CONFIG", 0x80000005},
    {"HKEY_DYN_DATA", 0x80000006},
};

/// How many levels of keys a root can have below it. Windows allows no deeper tree; only a link that leads
/// back to its own parent seems to.
inline constexpr int kDeepestLevel = 512;

/// A key path taken apart: "\HKEY_USERS\a\b" is root HKEY_USERS and subkey "a\b".
struct SplitPath {
    std::optional<std::uint32_t> root;  // nothing for a name that no row of the root table has
    std::optional<std::string> subkey;  // nothing when the path is the root itself
};

/// Takes a key path apart. Root names are compared exactly, letter case included.
[[nodiscard]] SplitPath SplitKeyPathText(std::string_view path);

/// The path of a child key: parent, backslash, name.
[[nodiscard]] std::string JoinKeyPath(std::string_view parent, std::string_view child);

/// A date and time of day as the system splits a file time.
struct WriteTime {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
};

/// The text form of a write time, as in "2009/03/05 07:08:09".
[[nodiscard]] std::string WriteTimeText(const WriteTime& time);
