#pragma once

#include <string>

/// Compares the rows that an analysis of the scratch registry shows in the window, those that the program for
/// scripts writes, and, of the scratch key, those that a plain walk expects; their order counts.
/// @return what was compared, in words.
/// @throws std::runtime_error with the first difference.
[[nodiscard]] std::string CompareRows();
