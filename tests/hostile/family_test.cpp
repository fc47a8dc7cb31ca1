#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <string>

#include "console/row_formats.h"
#include "tests/hostile/explained.h"
#include "tests/hostile/host_program.h"
#include "tests/hostile/hostile_registry.h"
#include "tests/hostile/not_returned.h"

namespace {

void CheckExplained(const std::vector<Change>& changes, const CExplained& explained) {
    for (const Change& change : changes)
        if (!explained.Holds(change)) FAIL_CHECK("not named by any row: " << Describe(change));
}

/// Checks that a replay left nothing changed but what no export can bring back.
void CheckBroughtBack(const Picture& before, const Picture& replayed, std::size_t changes) {
    const CNotReturned notReturned(before);
    std::map<std::string, int> kinds;
    for (const Change& change : Changes(before, replayed)) {
        const std::optional<std::string> reason = notReturned.ReasonFor(change);
        if (reason.has_value())
            ++kinds[*reason];
        else
            FAIL_CHECK("not brought back: " << Describe(change));
    }
    std::string told;
    for (const auto& [kind, count] : kinds) told += "\n  " + std::to_string(count) + ": " + kind;
    MESSAGE("of ", changes, " changes these are left:", told);
}

/// Plants a family, finds it, cleans what was found, and plays the undo file back.
/// @return the rows that were found.
std::vector<Row> RunFamily(void (*plant)(CHostileRegistry& registry), bool mayReplay) {
    const CHostProgram program;
    CHostileRegistry registry;
    plant(registry);
    const Picture before = TakeRegistryPicture();
    const std::vector<Row> rows = program.Analyze("");
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
    if (mayReplay) CheckBroughtBack(before, replayedPicture, changes.size());
    return rows;
}

bool HasRowOf(const std::vector<Row>& rows, const std::string& key) {
    return std::ranges::any_of(rows, [&key](const Row& row) { return row.key == key; });
}

}  // namespace

TEST_CASE("hostile names are found, cleaned and brought back") { (void)RunFamily(&PlantNames, true); }

TEST_CASE("names with line breaks are found and cleaned, and not replayed") {
    (void)RunFamily(&PlantLineBreaks, false);
}

TEST_CASE("hostile data are found, cleaned and brought back") { (void)RunFamily(&PlantData, true); }

TEST_CASE("references to devices, pipes and streams are found, cleaned and brought back" *
          doctest::test_suite("smoke")) {
    (void)RunFamily(&PlantReferences, true);
}

TEST_CASE("hostile trees are found, cleaned and brought back") {
    const std::vector<Row> rows = RunFamily(&PlantTrees, true);
    const std::string software = R"(\HKEY_CURRENT_USER\Software\)";
    CHECK(HasRowOf(rows, software + "VmHostDeep"));
    CHECK_FALSE(HasRowOf(rows, software + "VmHostFull"));
    CHECK_FALSE(HasRowOf(rows, software + "VmHostDeeper"));
}

TEST_CASE("hostile links are found, cleaned and brought back") { (void)RunFamily(&PlantLinks, true); }

TEST_CASE("keys that refuse access are found, cleaned and brought back") {
    (void)RunFamily(&PlantRights, true);
}
