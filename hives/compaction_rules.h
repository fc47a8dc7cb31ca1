#pragma once

#include <cstdint>
#include <string>

/// A file's size as the summary shows it, in bytes, as in " 262144".
[[nodiscard]] std::string SizeText(std::uint64_t bytes);

/// What part of a file's size is gone, as in " 12.50%"; negative for a file that has grown. A file that was
/// empty before has lost nothing.
[[nodiscard]] std::string RatioText(std::uint64_t before, std::uint64_t after);
