#include "console/restart.h"

#include "platform/host_services.h"

ExitCode RestartAsAsked(CTerminal& terminal, Restart restart, bool isNeeded) {
    constexpr char kNeeded[] = "A restart of the system is needed for this to take effect.";
    const bool isTold = !isNeeded || WriteOutputLine(terminal, kNeeded);
    const ExitCode done = isTold ? ExitCode::Done : ExitCode::Failed;
    if (restart == Restart::Never) return done;
    if (restart == Restart::Ask && !Ask(terminal, "Restart the system now?")) return done;
    if (SystemActions().RestartSystem()) return done;
    WriteErrorLine(terminal, "The system refuses to restart.");
    return ExitCode::Failed;
}
