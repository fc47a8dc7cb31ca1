#include "console/system_terminal.h"

#include <doctest/doctest.h>

#include "platform/owners.h"
#include "tests/support/call_hook.h"

namespace {

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

BOOL WINAPI ReadAborted(HANDLE, LPVOID, DWORD, LPDWORD read, LPOVERLAPPED) {
    *read = 0;
    ::SetLastError(ERROR_OPERATION_ABORTED);
    return TRUE;
}

BOOL WINAPI ReadNothing(HANDLE, LPVOID, DWORD, LPDWORD read, LPOVERLAPPED) {
    *read = 0;
    return TRUE;
}

/// Stands for the end of the program.
struct Ended {
    UINT exitCode;
};

void WINAPI Throw(UINT exitCode) { throw Ended{exitCode}; }

template <class Action>
UINT ExitCodeOf(Action action) {
    const CCallHook end("ExitProcess", Address(&Throw));
    try {
        action();
    } catch (const Ended& ended) {
        return ended.exitCode;
    }
    return 0;
}

}  // namespace

TEST_CASE("a read that Ctrl+C ends is a cancel, and no empty answer or input") {
    CSystemTerminal terminal;
    {
        const CCallHook read("ReadFile", Address(&ReadAborted));
        CHECK(ExitCodeOf([&] { (void)terminal.ReadAnswer(); }) == 130);
        CHECK(ExitCodeOf([&] { (void)terminal.ReadInput(); }) == 130);
    }
    const CCallHook read("ReadFile", Address(&ReadNothing));
    ::SetLastError(ERROR_OPERATION_ABORTED);  // of some former call
    CHECK(terminal.ReadAnswer().empty());
    ::SetLastError(ERROR_OPERATION_ABORTED);
    CHECK(terminal.ReadInput() == std::optional<std::string>(""));
}
