#pragma once

#include <windows.h>

// What Ctrl+C, Ctrl+Break and the closing of the terminal do. Without one of these guards they end the
// program at once, with ExitCode::Canceled.

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

/// Takes Ctrl+C, Ctrl+Break, the closing of the terminal and the system's shutdown over from the system.
void InstallInterruption();

/// Does what Ctrl+C does. @return false: the program is to end.
[[nodiscard]] bool Interrupt();

/// What is to be done about an event of the terminal.
enum class EventAnswer {
    GoOn,
    EndProgram,
    // The system ends the program as soon as its handler returns, so that has to wait for the work's own end.
    // The system bounds the wait: some seconds.
    AwaitEnd,
};

/// Does what an event does, apart from what it answers.
/// @param event  CTRL_..._EVENT
[[nodiscard]] EventAnswer TakeConsoleEvent(DWORD event);

/// Ends the program as one that was canceled.
[[noreturn]] void EndAsCanceled();
