#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The text of one entry to clean: its key path and, for an entry about a value, the value name behind a
/// backslash and between double quotes, as in `\HKEY_CURRENT_USER\Software\x\"Path"`.
/// @param valueName  empty for an entry about the key itself.
[[nodiscard]] std::string EntryText(std::string_view keyPath, std::string_view valueName);

/// An entry's text taken apart.
struct Entry {
    std::uint32_t root;      // as the predefined roots are numbered
    std::string rootName;    // as it stands in the text
    std::string subkeyPath;  // below the root, without a leading backslash
    std::optional<std::string> valueName;
};

/// Takes an entry's text apart. Root names are compared ignoring letter case.
/// @return nothing for a text that does not begin with a backslash, that names a root and nothing below it,
/// or whose root is unknown.
[[nodiscard]] std::optional<Entry> ParseEntry(std::string_view entryText);
