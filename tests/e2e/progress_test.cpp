#include <doctest/doctest.h>

#include <algorithm>

#include "tests/driver/window_access.h"
#include "tests/e2e/full_analysis.h"
#include "tests/e2e/planted_values.h"

TEST_CASE("the progress dialog has its texts and takes its owner's input") {
    PlantedValues();
    const FreshApp app;
    const CProgressDialog dialog = StartAnalysis(app);
    CHECK(::GetWindow(dialog.Window(), GW_OWNER) == app.Frame());
    CHECK(::IsWindowEnabled(app.Frame()) == FALSE);
    CHECK(TextOf(dialog.Window()).empty());
    CHECK(TextOf(dialog.Control(controls::kLabel)) ==
          "Analyzing the invalid registry entries. Please wait...");
    CHECK(dialog.GroupTexts() ==
          std::vector<std::string>{"Last invalid registry key:", "Current registry key:"});
    CHECK(TextOf(dialog.Control(IDCANCEL)) == "Cancel");
    CHECK((StyleOf(dialog.Control(IDCANCEL)) & BS_TYPEMASK) == BS_DEFPUSHBUTTON);
    for (const int id : {controls::kLastKey, controls::kCurrentKey}) {
        CHECK(HasClass(dialog.Control(id), "Edit"));
        CHECK((StyleOf(dialog.Control(id)) & (ES_MULTILINE | ES_READONLY)) == (ES_MULTILINE | ES_READONLY));
    }
    CHECK(HasClass(dialog.Control(controls::kProgressBar), "msctls_progress32"));
    CHECK(dialog.BarRange() == std::pair(0, 400));
    dialog.PressCancel();
    DismissResult(app);
}

TEST_CASE("the dialog takes the main window's input as long as the analysis runs") {
    CHECK_FALSE(FullAnalysis().ownerWasEnabled);
}

TEST_CASE("the current key follows the analysis through the hives") {
    const auto& keys = FullAnalysis().currentKeys;
    CHECK(keys.size() >= 20);
    for (const char* hive : {R"(\HKEY_LOCAL_MACHINE\)", R"(\HKEY_CURRENT_USER\)", R"(\HKEY_USERS\)"}) {
        CAPTURE(hive);
        CHECK(std::ranges::any_of(keys, [hive](const std::string& key) { return key.starts_with(hive); }));
    }
}

TEST_CASE("the last key is that of the newest row") {
    const AnalysisRecord& seen = FullAnalysis();
    CHECK(seen.lastKeyComparisons > 0);
    CHECK(seen.staleKeys.empty());
    for (const std::string& shown : seen.lastKeys) {
        const auto names = [&shown](const ListRow& row) { return row.key == shown; };
        CAPTURE(shown);
        CHECK((shown.empty() || std::ranges::any_of(seen.rows, names)));
    }
}

TEST_CASE("the busy bar moves in steps of 10 within 0 to 400") {
    const auto& positions = FullAnalysis().barPositions;
    CHECK(positions.size() >= 5);
    for (const int position : positions) {
        CAPTURE(position);
        CHECK(position >= 0);
        CHECK(position <= 400);
        CHECK(position % 10 == 0);
    }
}

TEST_CASE("rows are listed and drawn while the analysis still runs") {
    const AnalysisRecord& seen = FullAnalysis();
    CHECK(seen.counts.size() >= 3);
    CHECK(std::ranges::is_sorted(seen.counts));
    CHECK(seen.rowsWereDrawn);
}
