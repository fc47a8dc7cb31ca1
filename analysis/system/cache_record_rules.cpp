#include "analysis/system/cache_record_rules.h"

CachedPath CacheRecordPath(std::span<const unsigned char> record) {
    constexpr std::size_t kPathOffset = 28;
    CachedPath path;
    for (std::size_t at = kPathOffset; at + 1 < record.size(); at += 2) {
        const auto character = static_cast<char16_t>(record[at] | (record[at + 1] << 8));
        if (character == 0) break;
        if (path.text.size() == kLongestCachedPath) {
            path.isWhole = false;
            break;
        }
        path.text += character;
    }
    return path;
}
