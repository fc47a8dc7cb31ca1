#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/row.h"
#include "console/terminal.h"

/// Reads the rows that a user names for cleaning. Their checks must be known.
/// @param file  "-": standard input.
/// @return nothing when they cannot all be read, which is told then.
[[nodiscard]] std::optional<std::vector<Row>> ReadNamedRows(CTerminal& terminal, const std::string& file);
