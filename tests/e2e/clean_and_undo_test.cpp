#include <doctest/doctest.h>

#include <algorithm>

#include "platform/folder_tree.h"
#include "tests/driver/dialog_driver.h"
#include "tests/driver/screen.h"
#include "tests/e2e/program.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/shown_rows.h"
#include "tests/e2e/whole_registry.h"

namespace {

constexpr DWORD kReplayPatience = 20'000;  // milliseconds

std::size_t CheckOurRows(const CAppDriver& app) {
    const std::vector<ListRow> rows = app.List().Rows();
    std::size_t count = 0;
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (IsOurs(rows[row])) {
            app.List().Check(static_cast<int>(row), true);
            ++count;
        }
    return count;
}

void Clean(const CAppDriver& app, std::size_t count) {
    app.Post(commands::kClean);
    const CMessageBox question = app.WaitForMessageBox();
    TakePicture("clean-question");
    CHECK(question.Caption() == "Cleaning");
    CHECK(question.Text() == "Clean the selected " + std::to_string(count) + " invalid registry entries? ");
    CHECK(question.Buttons() == std::vector<std::string>{"OK", "Cancel"});
    question.Dismiss("OK");
    CHECK(AnswerBox(app, (std::to_string(count) + " selected").c_str(), "OK", kReplayPatience) ==
          std::to_string(count) + " selected invalid registry entries cleaned successfully.");
}

}  // namespace

TEST_CASE("cleaning a row of every rule and undoing it leaves the registry as it was") {
    DeleteFolderContents(TestFolder() + "\\Undo");
    const CRulePlants plants;
    const Tree before = ReadRegistry();
    const FreshApp app;
    RunAnalysis(app);
    const std::vector<ListRow> rows = app.List().Rows();
    const std::size_t count = CheckOurRows(app);
    REQUIRE(count > 100);
    Clean(app, count);

    CHECK(app.List().Count() == static_cast<int>(rows.size() - count));
    for (const ListRow& row : app.List().Rows()) CHECK_FALSE(IsOurs(row));
    for (const ListRow& row : rows) {
        CAPTURE(row.key);
        CAPTURE(row.valueName);
        if (IsOurs(row)) CHECK_FALSE(IsStillThere(row));
    }
    REQUIRE(Difference(before, ReadRegistry()) != "");

    const std::string date = UndoOnlyFile(app);
    CHECK(AnswerBox(app, "Undo the", "Yes") == "Undo the selected registry repair on " + date + "?");
    CHECK(AnswerBox(app, "Repair made", "OK") == "Repair made on " + date + " recovered successfully.");
    // The editor runs on by itself.
    const std::string difference = DifferenceInTime(before, kReplayPatience);
    CHECK(difference == "");
    DeleteFolderContents(TestFolder() + "\\Undo");
}
