#pragma once

#include <windows.h>

/// Has the system answer with an error where it would bring up a box and wait: for a path on a drive without
/// a medium, for one.
inline void SuppressDriveBoxes() {
    ::SetErrorMode(::SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

/// Has the system end this program without a box where it crashes.
inline void SuppressCrashBox() { ::SetErrorMode(::SetErrorMode(0) | SEM_NOGPFAULTERRORBOX); }
