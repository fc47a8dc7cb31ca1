#pragma once

#include <string_view>

/// Whether a key path is of a pattern, in any letter case. "*" stands for any characters, backslashes
/// included, and "?" for one; every other character stands for itself. A pattern without a leading backslash
/// is compared with the path behind its own.
[[nodiscard]] bool KeyMatches(std::string_view pattern, std::string_view keyPath);
