#pragma once

#include "analysis/check_walk.h"

/// An area under HKEY_LOCAL_MACHINE, by its key path.
[[nodiscard]] inline CheckArea MachineArea(const char* path) {
    constexpr std::size_t kRootLength = sizeof R"(\HKEY_LOCAL_MACHINE\)" - 1;
    return {HKEY_LOCAL_MACHINE, path + kRootLength, path};
}
