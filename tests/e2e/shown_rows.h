#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/driver/remote_list.h"

/// Where the key that a row shows lies in the registry.
struct KeyPlace {
    HKEY root;
    std::string subkey;
};
/// @throws CDriverError for a key path whose root is unknown.
[[nodiscard]] KeyPlace PlaceOf(const std::string& keyPath);

/// Checks that two lists show the same in the same order. Where they do not, every row that only one of
/// them has is told.
void CheckSameRows(const std::vector<ListRow>& found, const std::vector<ListRow>& expected);
