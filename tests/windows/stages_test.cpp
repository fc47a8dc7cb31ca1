#include "analysis/stages.h"

#include <doctest/doctest.h>

#include <string>

#include "analysis/category_driver.h"
#include "analysis/com/com_checks.h"
#include "analysis/deep_scan.h"
#include "analysis/parameter.h"
#include "platform/worker_thread.h"
#include "tests/support/native_calls.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr DWORD kLongestStage = 120'000;

/// Runs a stage until its first progress and cancels it there; the key that it started with.
std::string FirstKeyOf(const AnalysisStage& stage) {
    CRecordingView view;
    view.onEvent = [&view](const ViewEvent&) { view.Cancel(); };
    CHECK(view.RunStage(stage.threadProc).inTime);
    REQUIRE_FALSE(view.Progress().empty());
    CHECK(view.Progress().size() == 1);
    return view.Progress()[0];
}

bool HasRow(const CRecordingView& view, const std::string& keyEnding, const std::string& reference) {
    for (const ViewEvent& row : view.Rows())
        if (row.key->ends_with(keyEnding) && row.data == reference) return true;
    return false;
}

}  // namespace

TEST_CASE("the analysis is ten stages, whose done messages follow one another") {
    REQUIRE(AnalysisStages().size() == 10);
    for (UINT index = 0; index < 10; ++index) CHECK(AnalysisStages()[index].doneMessage == 0x465 + index);
}

TEST_CASE("the first three stages scan the machine, the current user and all users, in this order") {
    const char* const keys[] = {"\\HKEY_LOCAL_MACHINE", "\\HKEY_CURRENT_USER", "\\HKEY_USERS"};
    for (std::size_t index = 0; index < 3; ++index) CHECK(FirstKeyOf(AnalysisStages()[index]) == keys[index]);
    CHECK((AnalysisStages()[0].work == &ScanLocalMachine));
    CHECK((AnalysisStages()[1].work == &ScanCurrentUser));
    CHECK((AnalysisStages()[2].work == &ScanUsers));
}

TEST_CASE("each scan walks its own hive") {
    // The key text alone could belong to another handle.
    struct {
        void (*scan)();
        HKEY root;
        const char* path;
    } const rows[] = {
        {&ScanLocalMachine, HKEY_LOCAL_MACHINE, "\\HKEY_LOCAL_MACHINE\\"},
        {&ScanCurrentUser, HKEY_CURRENT_USER, "\\HKEY_CURRENT_USER\\"},
        {&ScanUsers, HKEY_USERS, "\\HKEY_USERS\\"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.path);
        char name[256] = "";
        DWORD length = sizeof name;
        REQUIRE(::RegEnumKeyExA(row.root, 0, name, &length, nullptr, nullptr, nullptr, nullptr) ==
                ERROR_SUCCESS);
        CRecordingView view;
        view.onEvent = [&](const ViewEvent& event) {
            if (event.currentKey && event.currentKey->starts_with(row.path)) view.Cancel();
        };
        CHECK(view.Run([&] { row.scan(); }).canceled);
        CHECK(view.Progress().back() == row.path + std::string(name));
    }
}

TEST_CASE("stages four to nine are the COM checks, and the last one runs the categories") {
    void (*const works[])() = {&CheckClassSubkeys,    &CheckClassLinks,        &CheckTypeLibraries,
                               &CheckClassesRootKeys, &CheckClassTypeLibLinks, &CheckInterfaces,
                               &RunCategoryChecks};
    for (std::size_t index = 0; index < std::size(works); ++index) {
        CAPTURE(index);
        CHECK((AnalysisStages()[index + 3].work == works[index]));
    }
}

TEST_CASE("the whole chain finds planted references and posts one done message per stage, in order") {
    CScratchKey machine(HKEY_LOCAL_MACHINE);
    SetText(machine.Get(), "x", "C:\\gone\\machine.dll");
    CScratchKey user(HKEY_CURRENT_USER);
    SetText(user.Get(), "x", "C:\\gone\\user.dll");
    for (std::size_t index = 0; index < 10; ++index) {
        CAPTURE(index);
        const AnalysisStage& stage = AnalysisStages()[index];
        CRecordingView view;
        const WorkerEnd end = view.RunStage(stage.threadProc, kLongestStage);
        CHECK(end.inTime);
        CHECK(end.exitCode == 0);
        REQUIRE_FALSE(view.Events().empty());
        const ViewEvent& done = view.Events().back();
        CHECK(done.message == 0x465 + index);
        CHECK_FALSE(done.sent);
        CHECK(done.wParam == 0);
        CHECK(done.lParam == 0);
        CHECK(view.Events().size() == view.Progress().size() + view.Rows().size() + 1);
        CHECK(HasRow(view, machine.Path(), "C:\\gone\\machine.dll") == (index == 0));
        CHECK(HasRow(view, user.Path(), "C:\\gone\\user.dll") == (index == 1));
        // All users' hives hold the current user's under another name.
        CHECK(HasRow(view, "\\" + user.Subkey(), "C:\\gone\\user.dll") == (index == 1 || index == 2));
    }
}

TEST_CASE("a stage runs on the program's worker thread and ignores its parameter") {
    CRecordingView view;
    const AnalysisStage& last = AnalysisStages()[9];
    const WorkerEnd end = view.Run([&] {
        CUniqueHandle thread;
        {
            CParameter parameter;  // gone before the thread ends, as behind the later stages' starters
            thread = BeginThread(last.threadProc, &parameter, THREAD_PRIORITY_BELOW_NORMAL);
        }
        ::WaitForSingleObject(thread.Get(), 10'000);
    });
    CHECK(end.inTime);
    CHECK(view.Count(0x46E) == 1);
}
