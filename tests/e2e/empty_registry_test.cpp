#include <doctest/doctest.h>

#include "tests/e2e/full_analysis.h"
#include "tests/e2e/taken_entries.h"

// It empties much of the registry for a while, which a machine in use would not survive being interrupted.
TEST_CASE("an analysis that finds nothing says so, completed or canceled" * doctest::skip(!RunsUnderWine())) {
    const std::vector<ListRow>& rows = FullAnalysis().rows;
    CTakenEntries taken;
    taken.TakeAllClasses();
    for (const ListRow& row : rows) taken.TakeEntryOf(row);
    const FreshApp app;
    CHECK(RunAnalysis(app) == "Registry analyzing completed successfully, no invalid entry found.");
    CHECK(app.List().Rows() == std::vector<ListRow>{});
    CHECK(RunCanceledAnalysis(app, 0) == "Registry analyzing canceled, no invalid entry found.");
    CHECK(app.List().Count() == 0);
}
