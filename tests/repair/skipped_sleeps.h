#pragma once

#include <windows.h>

#include "tests/support/call_hook.h"

/// While it lives, what this program sleeps passes at once: its tick count goes on by the time.
class CSkippedSleeps {
public:
    /// Milliseconds, those included that would have been slept.
    [[nodiscard]] DWORD Taken() const { return Now() - m_start; }

private:
    static void WINAPI Pass(DWORD time) { s_skipped += time; }
    static DWORD WINAPI Now() { return s_before() + s_skipped; }

    static inline decltype(&::GetTickCount) s_before = nullptr;
    static inline DWORD s_skipped = 0;

    CCallHook m_clock{"GetTickCount", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Now)),
                      reinterpret_cast<FARPROC*>(&s_before)};
    CCallHook m_sleep{"Sleep", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Pass))};
    DWORD m_start = Now();
};
