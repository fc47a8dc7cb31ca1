#pragma once

#include <windows.h>

// What Ctrl+C does. Without one of these guards it ends the program at once, with ExitCode::Canceled.

/// While one lives, Ctrl+C sets an event, and the work that polls it comes to an orderly end.
class CCancelable {
public:
    /// @param event  borrowed; it must last as long as this object.
    explicit CCancelable(HANDLE event);
    CCancelable(const CCancelable&) = delete;
    CCancelable& operator=(const CCancelable&) = delete;
    ~CCancelable();
};

/// While one lives, Ctrl+C does nothing: half of the work would be worse than none.
class CUninterruptible {
public:
    CUninterruptible();
    CUninterruptible(const CUninterruptible&) = delete;
    CUninterruptible& operator=(const CUninterruptible&) = delete;
    ~CUninterruptible();
};

/// Takes Ctrl+C, Ctrl+Break and the closing of the terminal over from the system.
void InstallInterruption();

/// Does what Ctrl+C does. @return false: the program is to end.
[[nodiscard]] bool Interrupt();
