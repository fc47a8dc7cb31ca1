#include "console/restart.h"

#include "platform/host_services.h"

ExitCode RestartAsAsked(CTerminal& terminal, Restart restart, bool isNeeded) {
    constexpr char kNeeded[] = "A restart of the system is needed for this to take effect.";
    if (isNeeded && !WriteOutputLine(terminal, kNeeded)) return ExitCode::Failed;
    if (restart == Restart::Never) return ExitCode::Done;
    if (restart == Restart::Ask && !Ask(terminal, "Restart the system now?")) return ExitCode::Done;
    if (SystemActions().RestartSystem()) return ExitCode::Done;
    WriteErrorLine(terminal, "The system refuses to restart.");
    return ExitCode::Failed;
}
