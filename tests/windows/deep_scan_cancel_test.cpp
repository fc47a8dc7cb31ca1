#include <doctest/doctest.h>

#include <string>

#include "analysis/deep_scan.h"
#include "analysis/stages.h"
#include "scan_support.h"
#include "tests/support/native_calls.h"

namespace {

const AnalysisStage& CurrentUserStage() { return AnalysisStages()[1]; }

/// Cancels when the view has been sent this many progress messages.
void CancelAt(CRecordingView& view, std::size_t progress) {
    view.onEvent = [&view, progress](const ViewEvent&) {
        if (view.Count(kProgressMessage) == progress) view.Cancel();
    };
}

}  // namespace

TEST_CASE("a scan that is cancelled before it begins sends the cancel message and nothing else") {
    const CScratchKey key;
    CRecordingView view;
    view.Cancel();
    const WorkerEnd end = Scan(view, key);
    CHECK(end.canceled);
    REQUIRE(view.Events().size() == 1);
    CHECK(view.Events()[0].message == 0x471);
    CHECK(view.Events()[0].sent);
}

TEST_CASE("a cancelled scan notices before the next value, and its cancel message is the last") {
    CScratchKey key;
    for (const char* name : {"a", "b", "c"}) SetText(key.Get(), name, "C:\\gone\\" + std::string(name));
    CRecordingView view;
    CancelAt(view, 2);
    CHECK(Scan(view, key).canceled);
    CHECK(view.RowLines() == "a|C:\\gone\\a\nb|C:\\gone\\b\n");  // the value in hand is still examined
    CHECK(view.Count(kProgressMessage) == 2);
    CHECK(view.Count(kCanceledMessage) == 1);
    CHECK(view.Events().back().message == kCanceledMessage);
}

TEST_CASE("a cancel at a key's last call is noticed by the first value of its subkey") {
    CScratchKey key;
    key.Add("child");
    CRecordingView view;
    CancelAt(view, 1);
    CHECK(Scan(view, key).canceled);
    CHECK(view.Count(kProgressMessage) == 1);
    CHECK(view.Count(kCanceledMessage) == 1);
}

TEST_CASE("a cancel that no value is left to notice does not cancel the scan") {
    CScratchKey key;
    key.Restrict(key.Add("refused"), 0);  // the subkey loop itself does not look
    CRecordingView view;
    CancelAt(view, 1);
    const WorkerEnd end = Scan(view, key);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.Count(kCanceledMessage) == 0);
}

TEST_CASE("a cancelled stage ends its thread with exit code 0 and posts no done message") {
    CRecordingView view;
    CancelAt(view, 5);
    const WorkerEnd end = view.RunStage(CurrentUserStage().threadProc);
    CHECK(end.inTime);
    CHECK(end.exitCode == 0);
    CHECK(view.Count(kProgressMessage) == 5);
    CHECK(view.Count(kCanceledMessage) == 1);
    CHECK(view.Events().back().message == kCanceledMessage);
    for (const ViewEvent& event : view.Events()) CHECK(event.sent);
}

TEST_CASE("a hundred cancelled scans leave no handle open") {
    CScratchKey key;
    SetText(key.Add("a\\b\\c\\d"), "x", "C:\\gone\\x");
    CRecordingView view;
    CancelAt(view, 5);
    for (int round = 0; round < 3; ++round) (void)Scan(view, key);
    const std::size_t before = OwnHandles().size();
    for (int round = 0; round < 100; ++round) {
        view.Forget();
        view.Uncancel();
        CHECK(Scan(view, key).canceled);
        CHECK(view.ProgressOf(key.Path() + "\\a\\b\\c\\d") == 1);
    }
    CHECK(OwnHandles().size() == before);
}

TEST_CASE("a scan that runs to its end leaves no handle open") {
    CScratchKey key;
    key.Add("a\\b\\c\\d");
    CRecordingView view;
    (void)Scan(view, key);
    const std::size_t before = OwnHandles().size();
    for (int round = 0; round < 5; ++round) CHECK_FALSE(Scan(view, key).canceled);
    CHECK(OwnHandles().size() == before);
}
