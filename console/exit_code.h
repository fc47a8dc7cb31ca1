#pragma once

/// What the program's exit code tells scripts.
enum class ExitCode {
    Done = 0,           // everything asked for is done, and no row was found
    RowsFound = 1,      // an analysis found rows; a trial run of cleaning would clean some
    WrongUsage = 2,     // the command line is wrong; nothing was done
    Failed = 3,         // something asked for could not be done; standard error tells what
    RightsMissing = 4,  // administrator rights, or a privilege, are missing; nothing was done
    Canceled = 130,     // by Ctrl+C or Ctrl+Break
};
