#include "tests/faults/watchdog.h"

#include <windows.h>

#include <mmsystem.h>

#include <atomic>
#include <cstdio>

namespace {

constexpr LONG kPatience = 60'000;   // milliseconds
constexpr DWORD kLookPeriod = 1000;  // milliseconds

std::string g_watched;
std::atomic<DWORD> g_watchedSince = 0;  // tick count; 0: nothing is watched

/// Waits by a call that no fault touches.
void Pause() { ::SleepEx(kLookPeriod, FALSE); }

DWORD WINAPI Watch(void*) {
    for (;; Pause()) {
        const DWORD since = g_watchedSince;
        if (since == 0 || static_cast<LONG>(::timeGetTime() - since) < kPatience) continue;
        std::printf("This hangs: %s\n[doctest] Status: FAILURE!\n", g_watched.c_str());
        std::fflush(stdout);
        ::ExitProcess(1);
    }
}

void StartWatching() {
    static const HANDLE thread = ::CreateThread(nullptr, 0, &Watch, nullptr, 0, nullptr);
    (void)thread;
}

}  // namespace

CWatched::CWatched(const std::string& what) {
    StartWatching();
    g_watched = what;
    g_watchedSince = ::timeGetTime() | 1;
}

CWatched::~CWatched() { g_watchedSince = 0; }
