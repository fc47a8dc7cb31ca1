#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// One line of comma-separated values as RFC 4180 has it, with its line end: fields that hold a comma, a
/// double quote or a line break stand between double quotes, and a double quote in them is doubled.
[[nodiscard]] std::string CsvLine(std::span<const std::string> fields);

/// Takes comma-separated values apart; a line may end with LF alone. @return the lines' fields; nothing when
/// a quoted field does not end, or is followed by anything but a comma or a line end.
[[nodiscard]] std::optional<std::vector<std::vector<std::string>>> ParseCsv(std::string_view text);
