#include <doctest/doctest.h>

#include <algorithm>

#include "tests/driver/window_access.h"
#include "tests/e2e/full_analysis.h"
#include "tests/e2e/planted_values.h"
#include "tests/e2e/shown_rows.h"

namespace {

std::vector<ListRow> PlantedRowsIn(std::vector<ListRow> rows) {
    std::erase_if(rows, [](const ListRow& row) { return !IsPlanted(row); });
    return rows;
}

}  // namespace

TEST_CASE("an analysis shows exactly the dead references, hive by hive" * doctest::test_suite("smoke")) {
    CheckSameRows(PlantedRowsIn(FullAnalysis().rows), PlantedValues().ExpectedRows());
}

TEST_CASE("write times are shown in UTC") {
    const WriteTimes times = WriteTimesOf(HKEY_LOCAL_MACHINE, R"(Software\!VellumorE2E\06 resource)");
    if (times.utc == times.local)
        MESSAGE("this machine's local time is UTC, so the two cannot be told apart");
    const auto& rows = FullAnalysis().rows;
    const auto row = std::ranges::find_if(rows, [](const ListRow& candidate) {
        return candidate.key.starts_with(R"(\HKEY_LOCAL_MACHINE\)") &&
               candidate.key.ends_with(R"(\06 resource)");
    });
    REQUIRE(row != rows.end());
    CHECK(row->writeTime == times.utc);
}

TEST_CASE("the closing box tells the number of rows" * doctest::test_suite("smoke")) {
    const AnalysisRecord& seen = FullAnalysis();
    CHECK(seen.caption == "Analyzing result");
    CHECK(seen.text == "Registry analyzing completed successfully, " + std::to_string(seen.rows.size()) +
                           " invalid entries found.");
    CHECK(seen.buttons == std::vector<std::string>{"OK"});
    CHECK(seen.icon == "information");
    CHECK(seen.dialogWasHidden);
}

TEST_CASE("the main window takes no input while the closing box is open") {
    CHECK_FALSE(FullAnalysis().boxOwnerWasEnabled);
    CHECK_FALSE(FullAnalysis().commandRanBehindBox);
}

TEST_CASE("rows come unchecked") { CHECK(FullAnalysis().checkedRows.empty()); }

TEST_CASE("a second analysis begins with an empty list and finds the same") {
    const std::vector<ListRow> before = FullAnalysis().rows;
    const CAppDriver& app = AnalyzedApp();
    app.List().Check(0, true);
    StartAnalysis(app);
    WaitFor("the list to be emptied", [&] {
        return app.List().Count() < static_cast<int>(before.size()) && app.ShownProgressDialog();
    });
    CHECK(DismissResult(app, kAnalysisPatience) == CompletedText(static_cast<int>(before.size())));
    CheckSameRows(app.List().Rows(), before);
    CHECK(app.List().CheckedRows().empty());
}

TEST_CASE("commands that come from outside during an analysis are ignored") {
    PlantedValues();
    const FreshApp app;
    const CProgressDialog dialog = StartAnalysis(app);
    WaitForRows(app, 1);
    app.Post(commands::kAnalyze);
    app.Post(commands::kCheckAll);
    app.Post(commands::kToggleStatusBar);
    app.Post(commands::kExit);
    app.PostClose();
    app.Settle();
    CHECK(dialog.Exists());
    CHECK(app.List().Count() >= 1);
    CHECK(app.List().CheckedRows().empty());
    CHECK(::IsWindowVisible(app.StatusBar()) != FALSE);
    dialog.PressCancel();
    const CMessageBox box = app.WaitForMessageBox();
    app.Post(commands::kAnalyze);
    app.PostClose();
    app.Settle();
    CHECK(box.Exists());
    CHECK_FALSE(app.ShownProgressDialog());
    box.Dismiss();
    const auto anotherWindow = [&] { return app.ShownProgressDialog() || app.ShownMessageBox(); };
    CHECK(StaysFalse(anotherWindow, 500));
    CHECK(app.IsRunning());
}
