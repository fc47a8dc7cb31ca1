#pragma once

#include <string>
#include <string_view>

/// The help file in the program's folder, given with or without a trailing backslash.
[[nodiscard]] std::string HelpFileIn(std::string_view folder);
