#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// Longest path of a key that the deep scan enters, terminator included. A longer one would be cut to the
/// path of another key, so such a key is passed over with all that is below it.
inline constexpr std::size_t kScanPathBytes = 1000;

/// Whether a key and its whole subtree are left out of the deep scan. Letter case counts.
[[nodiscard]] bool KeyIsSkipped(std::string_view path);

/// Whether a value is left out: the list of page files, and service host command lines.
[[nodiscard]] bool ValueIsSkipped(std::string_view name, std::string_view data);

/// Drops the prefixes that stand before a path in known kinds of data ("@", "file://", ...). Deliberate: a
/// prefix found in the middle drops as many characters from the start.
/// @param data  zero-terminated; changed in place.
void DropPrefixes(char* data);

/// Where the deep scan learns about folders. The texts last as long as the source.
class CFolderSource {
public:
    virtual ~CFolderSource() = default;
    /// The Windows folder, as in "C:\WINDOWS"; empty when it cannot be told.
    [[nodiscard]] virtual std::string_view WindowsFolder() const = 0;
    /// What an environment variable, written with its percent signs, stands for; empty when that cannot be
    /// told.
    [[nodiscard]] virtual std::string_view Expand(const char* variable) const = 0;
};

/// Replaces a folder variable at the very start of the data. A result that does not fit leaves the data as
/// they were.
/// @param data  zero-terminated; its size is the room there is, terminator included.
void ReplaceFolderVariable(std::span<char> data, const CFolderSource& folders);
