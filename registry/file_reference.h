#pragma once

#include <windows.h>

#include <string>
#include <string_view>

/// Asks the system for the Windows folder; GetWindowsDirectoryA, except where a test answers otherwise.
using WindowsFolderQuery = UINT(WINAPI*)(LPSTR buffer, UINT size);

/// The Windows folder, as in "C:\WINDOWS"; empty when the system does not tell it within 100 bytes.
[[nodiscard]] std::string WindowsFolder(WindowsFolderQuery query = &::GetWindowsDirectoryA);

/// Whether neither the path nor the program that it begins with (the text up to ".exe") exists as a file or
/// folder. Environment variables are not expanded.
[[nodiscard]] bool FileReferenceIsMissing(std::string_view path,
                                          WindowsFolderQuery query = &::GetWindowsDirectoryA);

/// Whether a command line or path leads to a file: arguments behind ".exe " are dropped, environment
/// variables expanded, quotes taken off, the rest searched in its own folder or, without one, on the system's
/// search path. An empty text leads nowhere.
[[nodiscard]] bool CommandFileExists(std::string_view text);

/// The same for a value that names a module. A text that does not end in a three-letter extension is no file
/// name and counts as found.
[[nodiscard]] bool ModuleFileExists(std::string_view text);

/// The same for the image of a service or driver, whose path may begin with the system's own short forms
/// ("system32\...", "\SystemRoot\...", "\??\C:\...") and end in switches behind '-' or '/'.
[[nodiscard]] bool SystemFileExists(std::string_view image);
