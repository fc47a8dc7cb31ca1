#include <doctest/doctest.h>

#include <algorithm>

#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/full_analysis.h"
#include "tests/e2e/planted_values.h"

namespace {

constexpr DWORD kLongestCancel = 2000;  // milliseconds; for a single attempt on a busy machine

struct CancelTimes {
    DWORD pressedAfter;     // milliseconds from the Analyze command
    DWORD dialogGoneAfter;  // milliseconds from Cancel
    DWORD boxAfter;         // milliseconds from Cancel
};

CancelTimes CancelAtRow(const CAppDriver& app, int row) {
    const DWORD begin = ::GetTickCount();
    const CProgressDialog dialog = StartAnalysis(app);
    WaitForRows(app, row);
    const DWORD pressed = ::GetTickCount();
    dialog.PressCancel();
    WaitFor("the end of the dialog", [&] { return !dialog.Exists(); });
    const DWORD gone = ::GetTickCount();
    (void)app.WaitForMessageBox();
    return {pressed - begin, gone - pressed, ::GetTickCount() - pressed};
}

void WaitForThreads(const CAppDriver& app, std::size_t count) {
    WaitFor("the worker to end", [&] { return app.Threads().size() <= count; });
}

}  // namespace

TEST_CASE("Cancel ends the analysis at once and tells the rows found so far") {
    PlantedValues();
    const FreshApp app;
    RunCanceledAnalysis(app, 1);  // the first one brings threads that stay
    const std::size_t idleThreads = app.Threads().size();

    const CancelTimes times = CancelAtRow(app, 1);
    MESSAGE("pressed after " << times.pressedAfter << " ms; the dialog went after " << times.dialogGoneAfter
                             << " ms, the box came after " << times.boxAfter << " ms");
    CHECK(times.pressedAfter < 1000);
    CHECK(times.dialogGoneAfter < kLongestCancel);
    CHECK(times.boxAfter < kLongestCancel);

    TakePicture("canceled");
    const CMessageBox box = app.WaitForMessageBox();
    const std::vector<ListRow> rows = app.List().Rows();
    CHECK(rows.size() >= 1);
    CHECK(box.Caption() == "Analyzing result");
    CHECK(box.Text() == CanceledText(static_cast<int>(rows.size())));
    CHECK(box.Buttons() == std::vector<std::string>{"OK"});
    REQUIRE(box.Icon() != nullptr);
    CHECK(ShownSystemIcon(box.Icon(), "information") == "information");
    CHECK(::IsWindowEnabled(app.Frame()) == FALSE);
    box.Dismiss();

    // No later stage: its thread, its dialog, its box or its rows would show.
    WaitForThreads(app, idleThreads);
    const auto somethingGoesOn = [&] {
        return app.Threads().size() > idleThreads || app.ShownProgressDialog() || app.ShownMessageBox();
    };
    CHECK(StaysFalse(somethingGoesOn, 1000));
    CHECK(app.List().Rows() == rows);
}

TEST_CASE("Cancel within the first second is answered within half a second") {
    PlantedValues();
    const FreshApp app;
    DWORD best =
        kLongestCancel;  // the best of three, since other programs of the machine take their turns too
    for (int attempt = 0; attempt < 3; ++attempt) {
        const CancelTimes times = CancelAtRow(app, 1);
        if (times.pressedAfter < 1000) best = std::min(best, times.boxAfter);
        app.WaitForMessageBox().Dismiss();
    }
    CHECK(best < 500);
}

TEST_CASE("the canceled rows are the first ones of a whole analysis") {
    const std::vector<ListRow>& all = FullAnalysis().rows;
    const FreshApp app;
    RunCanceledAnalysis(app, 3);
    const std::vector<ListRow> rows = app.List().Rows();
    REQUIRE(rows.size() >= 3);
    REQUIRE(rows.size() <= all.size());
    CHECK(rows == std::vector<ListRow>(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(rows.size())));
}

TEST_CASE("after a cancel, a new analysis runs to its end") {
    const auto count = static_cast<int>(FullAnalysis().rows.size());
    const FreshApp app;
    const std::string canceled = RunCanceledAnalysis(app, 1);
    CHECK(canceled == CanceledText(app.List().Count()));
    CHECK(RunAnalysis(app) == CompletedText(count));
    CHECK(app.List().Rows() == FullAnalysis().rows);
}

TEST_CASE("cancelled analyses leave no handle open and no thread running") {
    PlantedValues();
    const FreshApp app;
    for (int round = 0; round < 3; ++round) RunCanceledAnalysis(app, 1);
    const std::size_t threads = app.Threads().size();
    const std::size_t handles = app.HandleCount();
    REQUIRE(handles > 0);
    for (int round = 0; round < 20; ++round) RunCanceledAnalysis(app, 1 + round % 7);
    WaitForThreads(app, threads);
    MESSAGE(handles << " handles before 20 cancelled analyses, " << app.HandleCount() << " after them");
    // A single handle lost per analysis would show as 20.
    CHECK(app.HandleCount() <= handles + 2);
}
