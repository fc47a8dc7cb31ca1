#pragma once

#include <optional>
#include <vector>

#include "console/options.h"
#include "console/row.h"
#include "console/terminal.h"

/// What an analysis made for a command has found.
struct FoundRows {
    std::vector<Row> rows;
    bool isComplete = false;  // and not canceled
};

/// Runs an analysis, with a progress line.
/// @return nothing when it could not be run, which is told then.
[[nodiscard]] std::optional<FoundRows> FindRows(CTerminal& terminal, const RowChoice& choice);
