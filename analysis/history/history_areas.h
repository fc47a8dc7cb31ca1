#pragma once

#include "analysis/check_walk.h"

/// An area under HKEY_CURRENT_USER, by its key path.
[[nodiscard]] inline CheckArea UserArea(const char* path) {
    constexpr std::size_t kRootLength = sizeof R"(\HKEY_CURRENT_USER\)" - 1;
    return {HKEY_CURRENT_USER, path + kRootLength, path};
}
