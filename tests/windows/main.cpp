#define DOCTEST_CONFIG_IMPLEMENT
#include <windows.h>

#include <doctest/doctest.h>

#include <cstdio>
#include <cstring>

namespace {

/// Makes a crash fail the run. Left to Wine, its debugger ends the program, and with exit code 0.
LONG WINAPI FailOnCrash(EXCEPTION_POINTERS* crash) {
    const doctest::TestCaseData* test = doctest::getContextOptions()->currentTest;
    char text[512];
    std::snprintf(text, sizeof text, "CRASH %08lX at %p in TEST CASE:  %s\n",
                  crash->ExceptionRecord->ExceptionCode, crash->ExceptionRecord->ExceptionAddress,
                  test == nullptr ? "(none)" : test->m_name);
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
                nullptr);
    ::TerminateProcess(::GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    ::SetUnhandledExceptionFilter(&FailOnCrash);
    return doctest::Context(argumentCount, arguments).run();
}
