#pragma once

#include "console/exit_code.h"
#include "console/terminal.h"

/// Runs the command that a command line names.
/// @param arguments  as `main` gets them, the program's name first; in the system code page.
[[nodiscard]] ExitCode RunConsole(int count, const char* const* arguments, CTerminal& terminal);
