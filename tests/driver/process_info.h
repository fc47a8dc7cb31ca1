#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

/// The ids of a process's threads.
[[nodiscard]] std::vector<DWORD> ThreadsOf(DWORD processId);

/// How many handles a process has open, from the system's handle table.
[[nodiscard]] std::size_t HandleCountOf(DWORD processId);

/// The ids of the running processes of a program, as in "regedit.exe"; the letters' case does not matter.
[[nodiscard]] std::vector<DWORD> ProcessesNamed(const std::string& fileName);
