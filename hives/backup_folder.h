#pragma once

#include <string>
#include <vector>

/// Makes the folder of a new backup, named by the local time, and the folders that it needs beside it. One
/// that is there already is no error.
/// @return its full path, as in "D:\Tools\Backup\2009.05.14.16.03.27"; empty when the system cannot tell the
/// time or this program's folder.
[[nodiscard]] std::string MakeBackupFolder();

/// The full path of a backup by its name; empty when this program's folder is not known.
[[nodiscard]] std::string BackupFolder(const std::string& name);

/// The names of all folders in the backups' folder, in the order of the file search. The one of the replaced
/// hives is among them.
[[nodiscard]] std::vector<std::string> FindBackups();

/// Makes the folder that takes the files of replaced hives; one that is there already is no error.
/// @return its full path; empty when this program's folder is not known.
std::string MakeReplacedHivesFolder();

/// Deletes a backup with all that is in it. @return whether it is gone.
[[nodiscard]] bool DeleteBackup(const std::string& name);
