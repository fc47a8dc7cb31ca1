#pragma once

#include <cstddef>

/// What commands on the window's list cost, in seconds for one row.
struct RowCosts {
    double add;
    double checkAll;
    double uncheck;
};

/// Adds rows to the list of a window of this program's own, as workers do, checks and unchecks all of them.
[[nodiscard]] RowCosts TimeRows(std::size_t count);

/// Cleans rows that name values made for it. @return seconds for one row.
[[nodiscard]] double TimeCleaning(std::size_t count);
