#include "console/interruption.h"

#include <doctest/doctest.h>

#include "platform/owners.h"
#include "tests/console/console_bench.h"
#include "tests/support/call_hook.h"

namespace {

constexpr DWORD kInterrupting[] = {CTRL_C_EVENT, CTRL_BREAK_EVENT, CTRL_CLOSE_EVENT, CTRL_SHUTDOWN_EVENT};

CUniqueHandle MakeEvent() { return CUniqueHandle(::CreateEventA(nullptr, TRUE, FALSE, nullptr)); }

bool IsSet(const CUniqueHandle& event) { return ::WaitForSingleObject(event.Get(), 0) == WAIT_OBJECT_0; }

bool g_isTaken = false;

/// Answers, and has a Ctrl+C come just behind the answer to the commanding thread that there was none.
DWORD WINAPI WaitAndInterrupt(HANDLE handle, DWORD patience) {
    static const DWORD commanding = ::GetCurrentThreadId();
    const DWORD answer = ::WaitForSingleObjectEx(handle, patience, FALSE);
    if (patience == 0 && answer == WAIT_TIMEOUT && ::GetCurrentThreadId() == commanding && !g_isTaken)
        g_isTaken = Interrupt();
    return answer;
}

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace

TEST_CASE("without work that could be stopped, an event ends the program") {
    for (const DWORD event : kInterrupting) {
        CAPTURE(event);
        CHECK((TakeConsoleEvent(event) == EventAnswer::EndProgram));
    }
}

TEST_CASE("Ctrl+C and Ctrl+Break have the work come to its end") {
    for (const DWORD event : {CTRL_C_EVENT, CTRL_BREAK_EVENT}) {
        CAPTURE(event);
        const CUniqueHandle cancelEvent = MakeEvent();
        const CCancelable cancelable(cancelEvent.Get());
        CHECK((TakeConsoleEvent(event) == EventAnswer::GoOn));
        CHECK(IsSet(cancelEvent));
    }
}

TEST_CASE("the closing of the terminal and a shutdown wait for the work's end, which they hasten") {
    for (const DWORD event : {CTRL_CLOSE_EVENT, CTRL_SHUTDOWN_EVENT}) {
        CAPTURE(event);
        const CUniqueHandle cancelEvent = MakeEvent();
        const CCancelable cancelable(cancelEvent.Get());
        CHECK((TakeConsoleEvent(event) == EventAnswer::AwaitEnd));
        CHECK(IsSet(cancelEvent));
    }
}

TEST_CASE("work that must not be halved goes on, and is waited for where the program would be ended") {
    const CUninterruptible whole;
    for (const DWORD event : kInterrupting) {
        CAPTURE(event);
        const bool isEnding = event == CTRL_CLOSE_EVENT || event == CTRL_SHUTDOWN_EVENT;
        CHECK((TakeConsoleEvent(event) == (isEnding ? EventAnswer::AwaitEnd : EventAnswer::GoOn)));
    }
}

TEST_CASE("that some user logs off is no reason to end") {
    CHECK((TakeConsoleEvent(CTRL_LOGOFF_EVENT) == EventAnswer::GoOn));
    const CUniqueHandle cancelEvent = MakeEvent();
    const CCancelable cancelable(cancelEvent.Get());
    CHECK((TakeConsoleEvent(CTRL_LOGOFF_EVENT) == EventAnswer::GoOn));
    CHECK_FALSE(IsSet(cancelEvent));
}

TEST_CASE("a Ctrl+C that is taken during an analysis cancels the command, however late it comes") {
    CConsoleBench bench;
    g_isTaken = false;
    const CCallHook hook("WaitForSingleObject", Address(&WaitAndInterrupt));
    const ExitCode exitCode = bench.Run({"analyze", "--only", "wallpapers"});
    CHECK((exitCode == ExitCode::Canceled) == g_isTaken);
    CHECK((exitCode == ExitCode::Done) == !g_isTaken);
}
