#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A text as it can be shown in a terminal: control characters, which could move the cursor or hide what
/// stands before them, become "\x" and two hexadecimal digits, and a backslash stays one.
/// @param text  UTF-8.
[[nodiscard]] std::string Printable(std::string_view text);

/// How many characters a UTF-8 text has.
[[nodiscard]] std::size_t CountCharacters(std::string_view text);

/// A text of no more characters than a limit: a longer one loses its middle, in whose place "..." stands.
[[nodiscard]] std::string Shortened(std::string_view text, std::size_t limit);

/// The limit of lines that may be as long as they are.
inline constexpr std::size_t kAnyWidth = static_cast<std::size_t>(-1);

/// Lines of cells in columns, as wide as their longest cell, with two blanks between them and no blanks at a
/// line's end. Where the lines would be longer than `width`, the widest columns are cut to one width.
/// @param lines  printable UTF-8, with the same number of cells each.
[[nodiscard]] std::string TextTable(const std::vector<std::vector<std::string>>& lines, std::size_t width);
