#include <doctest/doctest.h>

#include <algorithm>

#include "tests/driver/dialog_driver.h"
#include "tests/e2e/program.h"
#include "tests/e2e/shown_rows.h"
#include "tests/hostile/explained.h"
#include "tests/hostile/host_program.h"
#include "tests/hostile/hostile_registry.h"
#include "tests/hostile/not_returned.h"

namespace {

constexpr DWORD kCleaningPatience = 120'000;  // milliseconds

Row AsRow(const ListRow& row) { return {row.key, row.writeTime, row.valueName, row.dataReference, "-", "-"}; }

/// Checks the rows of what was planted. @return these rows.
std::vector<Row> CheckPlanted(const CAppDriver& app) {
    std::vector<Row> planted;
    const std::vector<ListRow> rows = app.List().Rows();
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const Row row = AsRow(rows[index]);
        if (!IsPlanted(row)) continue;
        app.List().Check(static_cast<int>(index), true);
        planted.push_back(row);
    }
    return planted;
}

void Clean(const CAppDriver& app, std::size_t count) {
    app.Post(commands::kClean);
    AnswerBox(app, "Clean the selected", "OK");
    CHECK(AnswerBox(app, (std::to_string(count) + " selected").c_str(), "OK", kCleaningPatience) ==
          std::to_string(count) + " selected invalid registry entries cleaned successfully.");
}

}  // namespace

TEST_CASE("the window finds what the console finds in a hostile registry, cleans it and brings it back") {
    const CHostProgram program;
    CHostileRegistry registry;
    PlantLinks(registry);
    PlantRights(registry);
    const Picture before = TakeRegistryPicture();
    const std::vector<Row> listed = program.Analyze("");
    const CAppDriver app(program.Folder() + "\\vellumor.exe");
    RunAnalysis(app);
    const std::vector<Row> rows = CheckPlanted(app);
    MESSAGE(rows.size(), " rows in the window");
    REQUIRE(rows.size() == listed.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        CHECK(rows[index].key == listed[index].key);
        CHECK(rows[index].valueName == listed[index].valueName);
        CHECK(rows[index].dataReference == listed[index].dataReference);
    }
    const CExplained explained(rows);
    Clean(app, rows.size());
    const Picture after = TakeRegistryPicture();
    const std::vector<Change> changes = Changes(before, after);
    CHECK(changes.size() > 50);
    for (const Change& change : changes)
        if (!explained.Holds(change)) FAIL_CHECK("not named by any row: " << Describe(change));
    (void)UndoOnlyFile(app);
    AnswerBox(app, "Undo the", "Yes");
    AnswerBox(app, "Repair made", "OK", kCleaningPatience);
    // The editor runs on by itself.
    const CNotReturned notReturned(before);
    const auto isBack = [&] {
        return std::ranges::all_of(Changes(before, TakeRegistryPicture()), [&](const Change& change) {
            return notReturned.ReasonFor(change).has_value();
        });
    };
    WaitFor("all to be back that an export holds", isBack, kCleaningPatience);
    for (const Change& change : Changes(after, TakeRegistryPicture()))
        if (!explained.WasExported(change.key)) FAIL_CHECK("not of any row: " << Describe(change));
}
