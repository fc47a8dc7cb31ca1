#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "console/row.h"

/// How rows are written for other programs; docs/console.md describes each.
enum class RowFormat { Csv, Json, JsonLines };

/// Writes rows as UTF-8.
/// @param isComplete  whether the analysis ran to its end; json tells it.
[[nodiscard]] std::string WriteRows(std::span<const Row> rows, RowFormat format, bool isComplete);

/// Why a text is no list of rows: one line, for people.
struct RowsError {
    std::string text;
};

/// Reads rows in any of these formats, which it tells by the first characters. A byte order mark is passed
/// over, and UTF-16 taken as well, since shells put out text so. It takes the whole text or nothing of it.
[[nodiscard]] std::variant<std::vector<Row>, RowsError> ReadRows(std::string_view bytes);
