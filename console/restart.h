#pragma once

#include "console/exit_code.h"
#include "console/options.h"
#include "console/terminal.h"

/// Restarts the system, or does not, as the command line wishes.
/// @param isNeeded  whether what was done takes effect with the next start only.
[[nodiscard]] ExitCode RestartAsAsked(CTerminal& terminal, Restart restart, bool isNeeded);
