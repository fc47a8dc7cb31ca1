#pragma once

#include <string>

/// What became of a restore. Hives before the one that ended it stay registered for the next start.
enum class RestoreResult {
    Registered,   // every file of the folder; also when there is none
    Abandoned,    // a file is of no hive that is loaded
    InUse,        // the system has replaced a hive already and not been restarted since
    NotReplaced,  // any other failure
};

/// Registers every ".bck" file of a backup folder as the file that the system loads for its hive from the
/// next start on. The folder holds the same files afterwards.
/// @param folder  full path, without a trailing backslash.
[[nodiscard]] RestoreResult RestoreHives(const std::string& folder);
