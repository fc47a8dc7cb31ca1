#include <doctest/doctest.h>

#include <windows.h>

#include <algorithm>

#include "tests/faults/fault_runs.h"
#include "tests/support/call_hook.h"

namespace {

// Every function that the engine's objects leave to the linker, as the build has found them; most are of the
// run-time library.
constexpr const char* kEngineSymbols[] = {
#include <engine_symbols.inc>
};

struct Exception {
    const char* name;
    const char* reason;
};

constexpr char kCloses[] = "It closes; what is left open when it fails, nobody can close.";
constexpr char kCannotFail[] = "It tells no failure.";
constexpr char kAnswers[] = "Its answer is that of the window that it is sent to.";
constexpr char kNoMatter[] = "Nothing depends on it.";
constexpr char kOnce[] =
    "It is asked once in the life of a program; null_lookups_test has programs that are told null.";

constexpr Exception kExceptions[] = {
    {"CharLowerBuffA", kCannotFail},
    {"CharNextA", kCannotFail},
    {"CharUpperBuffW", kCannotFail},
    {"CloseHandle", kCloses},
    {"DispatchMessageA", kAnswers},
    {"FindClose", kCloses},
    {"FreeSid", kCloses},
    {"GetCurrentProcess", kCannotFail},
    {"GetCurrentThread", kCannotFail},
    {"GetLastError", kCannotFail},
    {"GetLengthSid", kCannotFail},
    {"GetLocalTime", kCannotFail},
    {"GetModuleHandleA", kOnce},
    {"GetProcAddress", kOnce},
    {"GetSystemDirectoryA", kOnce},
    {"GetTickCount", kCannotFail},
    {"IsWindow", kCannotFail},
    {"LoadLibraryA", kOnce},
    {"MessageBeep", kNoMatter},
    {"PeekMessageA", kCannotFail},
    {"PostQuitMessage", kCannotFail},
    {"RegCloseKey", kCloses},
    {"SendMessageA", kAnswers},
    {"SetLastError", kCannotFail},
    {"Sleep", kCannotFail},
    {"lstrcmpiA", kCannotFail},
    {"lstrcmpiW", kCannotFail},
    {"lstrcpynA", kCannotFail},
};

/// The functions of the system that the engine calls. A function of the run-time library that is written like
/// one of the system's is left out by its library.
std::vector<std::string> EngineCalls() {
    std::vector<std::string> calls;
    for (const char* symbol : kEngineSymbols)
        if (CCallHook::IsImported(symbol) && !CCallHook::IsImportedFrom(symbol, "msvcrt.dll"))
            calls.emplace_back(symbol);
    return calls;
}

bool CanFail(const std::string& name) {
    const auto isNamed = [&name](const FaultFunction& function) { return name == function.name; };
    return std::ranges::any_of(FaultFunctions(), isNamed);
}

bool IsExcepted(const std::string& name) {
    const auto isNamed = [&name](const Exception& exception) { return name == exception.name; };
    return std::ranges::any_of(kExceptions, isNamed);
}

}  // namespace

TEST_CASE("every function of the system that the engine calls can be made to fail, or there is a reason") {
    const std::vector<std::string> calls = EngineCalls();
    CHECK(calls.size() > 80);
    for (const char* known : {"RegOpenKeyExA", "CreateFileA", "SendMessageA", "PathFileExistsA"})
        CHECK(std::ranges::count(calls, known) == 1);
    for (const std::string& name : calls)
        CHECK_MESSAGE(CanFail(name) != IsExcepted(name), "neither or both: ", name);
    for (const Exception& exception : kExceptions)
        CHECK_MESSAGE(std::ranges::count(calls, exception.name) == 1,
                      "not called: ", std::string(exception.name));
}
