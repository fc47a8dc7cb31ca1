#pragma once

#include <functional>
#include <string>

/// Enables the privilege to save hives in this process where it holds it.
void EnableBackupPrivilege();

/// Saves every loaded hive that has a file, each to a file of its own, and stops at the first that cannot be
/// opened or saved; what is saved by then stays.
/// @param folder  without a trailing backslash. Deliberate: with an empty one the files go to the root of the
/// current drive.
/// @param saved   runs after each hive that is saved.
/// @return whether all are saved.
[[nodiscard]] bool BackupHives(const std::string& folder, const std::function<void()>& saved);
