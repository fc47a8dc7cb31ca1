#pragma once

#include <string>
#include <string_view>

/// A name of the usage counters in clear: the system stores it with each of the 52 ASCII letters rotated
/// by 13.
[[nodiscard]] std::string DecodeUsageName(std::string_view stored);
