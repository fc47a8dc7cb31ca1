#pragma once

#include <windows.h>

#include <string>

#include "platform/owners.h"
#include "repair/kind_repairs.h"

/// Root name and path, joined by a backslash; the root name alone for an empty path.
[[nodiscard]] std::string KeyTextOf(const RepairTarget& target, const std::string& path);

/// Opens a key; one that refuses access is taken over, and opened once more.
/// @param path  below the root; empty: the root itself, which is never taken over.
[[nodiscard]] LSTATUS OpenForced(HKEY root, const std::string& path, REGSAM access, CUniqueKey& key);

/// Appends what a repair is about to change to the undo file: the key at a path with its whole branch.
/// @return whether the repair may go on: always, unless it must have its copy.
[[nodiscard]] bool ExportBranch(const RepairTarget& target, const std::string& path);

/// The same for a key that is going to be deleted: a link is exported as a link. A key that refuses reading
/// or deleting is taken over first; once its deletion has been refused it would be too late for a copy, and
/// the subkeys of the key would stay.
[[nodiscard]] bool ExportUnit(const RepairTarget& target, const std::string& unit);
