#pragma once

#include <string>
#include <vector>

#include "console/exit_code.h"
#include "console/options.h"
#include "console/terminal.h"

// The commands of the program. Each writes its results to standard output and everything else to standard
// error, and returns the exit code.

/// Runs the checks and writes their rows.
[[nodiscard]] ExitCode RunAnalyze(CTerminal& terminal, const AnalyzeOptions& options);

/// Cleans rows that an analysis made now finds, too; every other row is left alone and told.
[[nodiscard]] ExitCode RunClean(CTerminal& terminal, const CleanOptions& options);

[[nodiscard]] ExitCode RunUndoList(CTerminal& terminal);
/// Writes back what an undo file holds, and waits until the registry editor has ended.
[[nodiscard]] ExitCode RunUndoReplay(CTerminal& terminal, const std::string& name);
[[nodiscard]] ExitCode RunUndoDelete(CTerminal& terminal, const std::vector<std::string>& names);

[[nodiscard]] ExitCode RunBackup(CTerminal& terminal, Restart restart);
[[nodiscard]] ExitCode RunRestoreList(CTerminal& terminal);
[[nodiscard]] ExitCode RunRestoreApply(CTerminal& terminal, const std::string& name, Restart restart);
[[nodiscard]] ExitCode RunRestoreDelete(CTerminal& terminal, const std::vector<std::string>& names);
[[nodiscard]] ExitCode RunCompact(CTerminal& terminal, Restart restart);

/// Lists the checks.
[[nodiscard]] ExitCode RunChecks(CTerminal& terminal);
