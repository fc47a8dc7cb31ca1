// What the engine asks for once and remembers for the life of its program is made to be missing in programs
// of their own: this one, started again for one of the tests that are left out otherwise.

#include <doctest/doctest.h>

#include "platform/host_services.h"
#include "registry/key_link.h"
#include "repair/repair_entry.h"
#include "tests/driver/console_program.h"
#include "tests/faults/fault_runs.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"

namespace {

using Deed = Repair::Deed;

/// Answers null in a function's place.
template <class Type>
struct Null;
template <class R, class... A>
struct Null<R(WINAPI*)(A...)> {
    static R WINAPI Answer(A...) {
        ::SetLastError(ERROR_PROC_NOT_FOUND);
        return R{};
    }
};

/// A function that answers null while it lives. What the test itself looks up must come before or behind.
template <auto Function>
class CNull {
public:
    explicit CNull(const char* name) : m_hook(name, Address()) {}

private:
    static FARPROC Address() {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Null<decltype(Function)>::Answer));
    }
    CCallHook m_hook;
};

/// Cleans and follows keys while the functions that go by a key's handle are not to be had.
template <auto Function>
void CleanWithout(const char* name) {
    CScratchKey software(HKEY_CURRENT_USER, R"(Software\VellumorNull)");
    SetText(software.Add("target"), "kept", "text");
    software.AddLink(R"(linked\link)", ObjectName(software.Add("target")));
    SetText(software.Add(R"(plain\sub)"), "named", "text");
    CScratchKey other(HKEY_CURRENT_USER, "VellumorNull");
    SetText(other.Add("deep"), "", "former");
    SetText(other.Add("deep"), "dead", "text");
    const CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.reg");
    std::vector<Deed> deeds;
    bool mayFollow = true;
    bool isSame = true;
    {
        const CFaultInForce noPauses(nullptr);
        const CNull<Function> null(name);
        for (const std::string& entry : {software.Path() + R"(\linked)", software.Path() + R"(\plain)",
                                         other.Path() + R"(\deep)", other.Path() + R"(\deep\"dead")"})
            deeds.push_back(RepairEntry(entry, undo).deed);
        mayFollow = CFollowedLinks().MayFollow(software.Get(), other.Get());
        isSame = IsSameKey(software.Get(), software.Get());
    }
    CHECK((deeds[0] != Deed::KeyRemoved));
    CHECK((deeds[1] == Deed::KeyRemoved));
    CHECK((deeds[2] == Deed::DefaultEmptied));
    CHECK((deeds[3] == Deed::ValueDeleted));
    CHECK(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\linked\link)"));
    CHECK(ValueExists(HKEY_CURRENT_USER, software.Subkey() + R"(\target)", "kept"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\plain)"));
    // Which key is behind a name is not known, so the value comes behind every export.
    CHECK(FileText(undo.FileName()).ends_with("\\deep]\r\n@=\"former\"\r\n\r\n"));
    CHECK_FALSE(mayFollow);
    CHECK_FALSE(isSame);
}

template <auto Function>
void ShowHelpWithout(const char* name) {
    const CNull<Function> null(name);
    CSystemActions actions;
    for (int time = 0; time < 2; ++time) actions.ShowHelp("x.chm");
    CHECK(::FindWindowA("HH Parent", nullptr) == nullptr);
}

/// Runs one of the tests below in a program of its own.
void CheckAlone(const std::string& testCase) {
    char path[MAX_PATH] = "";
    REQUIRE(::GetModuleFileNameA(nullptr, path, sizeof path) != 0);
    const CConsoleProgram program({path, "--no-skip --test-case=\"" + testCase + "\""});
    const std::string output = program.Wait().output;
    CAPTURE(output);
    // A program that crashes can end with exit code 0.
    CHECK(output.find("Status: SUCCESS!") != std::string::npos);
    CHECK(output.find(" 1 passed | 0 failed |") != std::string::npos);
}

constexpr const char* kAlone[] = {
    "null: links without GetModuleHandleA",   "null: links without GetProcAddress",
    "null: help without GetProcAddress",      "null: help without LoadLibraryA",
    "null: help without GetSystemDirectoryA",
};

}  // namespace

TEST_CASE("null: links without GetModuleHandleA" * doctest::skip()) {
    CleanWithout<&::GetModuleHandleA>("GetModuleHandleA");
}
TEST_CASE("null: links without GetProcAddress" * doctest::skip()) {
    CleanWithout<&::GetProcAddress>("GetProcAddress");
}
TEST_CASE("null: help without GetProcAddress" * doctest::skip()) {
    ShowHelpWithout<&::GetProcAddress>("GetProcAddress");
}
TEST_CASE("null: help without LoadLibraryA" * doctest::skip()) {
    ShowHelpWithout<&::LoadLibraryA>("LoadLibraryA");
}
TEST_CASE("null: help without GetSystemDirectoryA" * doctest::skip()) {
    ShowHelpWithout<&::GetSystemDirectoryA>("GetSystemDirectoryA");
}

TEST_CASE("what is asked for once may be missing") {
    for (const char* testCase : kAlone) {
        CAPTURE(std::string(testCase));
        CheckAlone(testCase);
    }
}
