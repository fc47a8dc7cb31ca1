#include "hives/compaction_rules.h"

#include <cstdio>

std::string SizeText(std::uint64_t bytes) { return " " + std::to_string(bytes); }

std::string RatioText(std::uint64_t before, std::uint64_t after) {
    const auto oldSize = static_cast<double>(before);
    const double ratio = before == 0 ? 0 : (oldSize - static_cast<double>(after)) / oldSize * 100;
    char text[64];
    const int length = std::snprintf(text, sizeof text, " %.2f%%", ratio);
    return {text, static_cast<std::size_t>(length)};
}
