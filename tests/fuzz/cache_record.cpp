// Runs the rule for records of cached program details over any bytes.
#include <vector>

#include "analysis/system/cache_record_rules.h"
#include "tests/fuzz/fuzz_support.h"

namespace {

std::size_t CharactersIn(std::size_t bytes) { return bytes < 28 ? 0 : (bytes - 28) / 2; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<unsigned char> record(bytes, bytes + size);
    const std::u16string path = CacheRecordPath(record).text;
    const std::size_t room = CharactersIn(size);
    Require(path.size() <= room, "a path lies within its record");
    Require(path.size() <= kLongestCachedPath, "a path is bounded");
    Require(path.find(u'\0') == std::u16string::npos, "a path ends at its terminator");
    const auto characterAt = [&record](std::size_t index) {
        return static_cast<char16_t>(record[28 + 2 * index] | (record[29 + 2 * index] << 8));
    };
    for (std::size_t i = 0; i < path.size(); ++i)
        Require(path[i] == characterAt(i), "a path is what stands in the record");
    const bool endsEarly = path.size() < room && path.size() < kLongestCachedPath;
    Require(!endsEarly || characterAt(path.size()) == 0, "only a terminator ends a path early");
    return 0;
}
