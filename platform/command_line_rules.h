#pragma once

#include <string_view>

/// Whether a command line names its program by its full path in quotes, as in `"C:\Windows\regedit.exe" /s`.
/// The system looks for any other in our own folder, in the working folder and along the search path, and
/// takes an unquoted path with a blank in it for several programs.
[[nodiscard]] bool NamesProgramInFull(std::string_view commandLine);
