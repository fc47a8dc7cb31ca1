#pragma once

#include <windows.h>

/// Walks a key's whole tree and reports each value whose data or name holds an absolute path to a file or
/// folder that does not exist.
/// @param key   open for reading, or a predefined root; borrowed.
/// @param path  the key's path.
/// @throws CAnalysisCanceled when the user cancels.
void ScanHiveForDeadFiles(HKEY key, const char* path);

void ScanLocalMachine();
void ScanCurrentUser();
void ScanUsers();
