#include <doctest/doctest.h>

#include "console/row_formats.h"
#include "tests/hostile/explained.h"
#include "tests/hostile/host_program.h"
#include "tests/hostile/hostile_registry.h"

namespace {

// The scan of the whole machine takes most of the time of an analysis; the test with the window runs it.
constexpr char kAllButMachine[] = "--skip dead-files-of-the-machine";

void CheckExplained(const std::vector<Change>& changes, const CExplained& explained) {
    for (const Change& change : changes)
        if (!explained.Holds(change)) FAIL_CHECK("not named by any row: " << Describe(change));
}

/// Plants a family, finds it, cleans what was found, and plays the undo file back.
void RunFamily(void (*plant)(CHostileRegistry& registry), bool mayReplay) {
    const CHostProgram program;
    CHostileRegistry registry;
    plant(registry);
    const Picture before = TakeRegistryPicture();
    const std::vector<Row> rows = program.Analyze(kAllButMachine);
    MESSAGE(registry.Count(), " keys and values planted, ", rows.size(), " rows");
    CHECK(rows.size() > 20);
    const CExplained explained(rows);

    // This finds all of them a second time, or refuses them.
    const ConsoleResult cleaned = program.Run("clean --rows - --yes", WriteRows(rows, RowFormat::Json, true));
    CHECK(cleaned.output.find("Undo file: ") != std::string::npos);
    CHECK(cleaned.error.find("no such entry") == std::string::npos);
    const Picture after = TakeRegistryPicture();
    const std::vector<Change> changes = Changes(before, after);
    CHECK(changes.size() > 10);
    CheckExplained(changes, explained);

    const ConsoleResult replayed = program.Run("undo replay " + program.UndoFile());
    CHECK(replayed.exitCode == (mayReplay ? 0 : 3));
    const Picture replayedPicture = TakeRegistryPicture();
    const std::vector<Change> brought = Changes(after, replayedPicture);
    CHECK(brought.empty() == !mayReplay);
    for (const Change& change : brought)
        if (!explained.WasExported(change.key)) FAIL_CHECK("not of any row: " << Describe(change));
    MESSAGE(changes.size(), " changes, of which ", Changes(before, replayedPicture).size(), " are left");
}

}  // namespace

TEST_CASE("hostile names are found, cleaned and brought back") { RunFamily(&PlantNames, true); }

TEST_CASE("names with line breaks are found and cleaned, and not replayed") {
    RunFamily(&PlantLineBreaks, false);
}

TEST_CASE("hostile data are found, cleaned and brought back") { RunFamily(&PlantData, true); }

TEST_CASE("references to devices, pipes and streams are found, cleaned and brought back" *
          doctest::test_suite("smoke")) {
    RunFamily(&PlantReferences, true);
}

TEST_CASE("hostile trees are found, cleaned and brought back") { RunFamily(&PlantTrees, true); }

TEST_CASE("hostile links are found, cleaned and brought back") { RunFamily(&PlantLinks, true); }

TEST_CASE("keys that refuse access are found, cleaned and brought back") { RunFamily(&PlantRights, true); }
