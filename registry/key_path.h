#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Where a key path leads: a predefined root (never closed) and the subkey below it.
struct KeyLocation {
    HKEY root;
    std::string subkey;  // empty: the root itself
};

/// The predefined handle of a root that the root table numbers.
[[nodiscard]] HKEY RootHandle(std::uint32_t number);

/// Turns "\HKEY_CURRENT_USER\a\b" into root and subkey; nothing for a root name that is not one of the seven
/// long names exactly.
[[nodiscard]] std::optional<KeyLocation> SplitKeyPath(std::string_view path);

/// The last write time of the key that a path names, in UTC as "2009/03/05 07:08:09"; nothing when the root
/// is unknown, or the key cannot be opened for reading or does not tell its time.
[[nodiscard]] std::optional<std::string> FormatWriteTime(std::string_view path);
