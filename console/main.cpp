#include "console/console.h"
#include "console/interruption.h"
#include "console/system_terminal.h"
#include "platform/error_mode.h"

int main(int argc, char** argv) {
    SuppressDriveBoxes();
    SuppressCrashBox();  // a script could not close it
    InstallInterruption();
    CSystemTerminal terminal;
    return static_cast<int>(RunConsole(argc, argv, terminal));
}
