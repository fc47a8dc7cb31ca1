#pragma once

#include <span>

/// One place of the last stage: a check, and the registry area that it covers.
struct CategoryCheck {
    const char* area;
    void (*check)();
};

/// The checks of the last stage in the order in which they run.
[[nodiscard]] std::span<const CategoryCheck> CategoryChecks();

/// Runs them one after another.
void RunCategoryChecks();
