#pragma once

#include <windows.h>

#include <memory>
#include <string>

/// The folder that the backup worker saves into; there while it runs.
extern std::unique_ptr<const std::string> g_backupFolder;

// The workers' thread procedures. At the end each tells its progress dialog, and after success it posts its
// done message to the channel's view. The parameter is not read.
UINT BackupHivesThread(void* parameter);
UINT CompactHivesThread(void* parameter);
