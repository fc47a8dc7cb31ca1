#pragma once

#include <windows.h>

#include "tests/driver/remote_list.h"
#include "tests/support/registry_tree.h"

/// What holds the plants, without what the registry editor and the platform keep of their own windows.
[[nodiscard]] Tree ReadRegistry();

/// Waits until the registry is as it was. @return what is different all the same when the time is over.
[[nodiscard]] std::string DifferenceInTime(const Tree& before, DWORD milliseconds);

/// Whether a row is of something that was planted, and not of the machine's own.
[[nodiscard]] bool IsOurs(const ListRow& row);

/// Whether what a row names is still there: its value, or the text of its key's default value.
[[nodiscard]] bool IsStillThere(const ListRow& row);
