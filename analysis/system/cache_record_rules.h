#pragma once

#include <cstddef>
#include <span>
#include <string>

/// The longest path, in characters, that is taken out of a record: no longer one names a file.
inline constexpr std::size_t kLongestCachedPath = 259;

/// A program path taken out of a record.
struct CachedPath {
    std::u16string text;  // empty where the record is too short to hold a path
    bool isWhole = true;  // false: the path goes on behind the longest that is taken
};

/// The program path in a record of cached program details: UTF-16 from byte 28 to a zero, or to the record's
/// end.
[[nodiscard]] CachedPath CacheRecordPath(std::span<const unsigned char> record);
