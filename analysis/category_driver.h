#pragma once

#include <span>

#include "analysis/check.h"

/// The checks of the last stage in the order in which they run.
[[nodiscard]] std::span<const Check> CategoryChecks();

/// Runs them one after another.
void RunCategoryChecks();
