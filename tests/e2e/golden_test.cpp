#include <doctest/doctest.h>

#include <algorithm>

#include "tests/e2e/golden_rows.h"
#include "tests/e2e/planted_values.h"
#include "tests/e2e/program.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/shown_rows.h"

namespace {

// Where a row can lack the mark, every row counts. A new machine has none there.
constexpr const char* kAreasOfOurs[] = {
    R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)",
    R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\LastVisitedMRU)",
};

bool IsOurs(const ListRow& row) {
    const auto marked = [](const std::string& text) { return text.find(kMark) != std::string::npos; };
    return marked(row.key) || marked(row.valueName) || marked(row.dataReference) ||
           std::ranges::find(kAreasOfOurs, row.key) != std::end(kAreasOfOurs);
}

std::string WithUser(std::string path) {
    constexpr std::string_view kUser = "<user>";
    if (const std::size_t found = path.find(kUser); found != std::string::npos)
        path.replace(found, kUser.size(), SpellingOf(HKEY_USERS, UserName()));
    return path;
}

std::string WriteTimeText(std::string path, Written written) {
    if (written == Written::Never) return "";
    for (int level = 0; level < static_cast<int>(written); ++level) path.erase(path.rfind('\\'));
    const KeyPlace place = PlaceOf(path);
    return WriteTimesOf(place.root, place.subkey).utc;
}

std::vector<ListRow> ExpectedRows() {
    std::vector<ListRow> rows;
    for (const auto& groups : {GoldenDeepRows(), GoldenClassRows(), GoldenRowsOfPlaces1To13(),
                               GoldenRowsOfPlaces14To25(), GoldenRowsOfPlaces26To37()})
        for (const GoldenGroup& group : groups)
            for (const GoldenRow& row : group.rows) {
                const std::string key = WithUser(group.area) + row.subkey;
                rows.push_back({key, WriteTimeText(key, row.written), row.valueName, row.dataReference});
            }
    return rows;
}

}  // namespace

TEST_CASE("an analysis shows every rule of every check, row by row and in order") {
    const CRulePlants plants;
    const std::vector<ListRow> expected = ExpectedRows();
    const FreshApp app;
    RunAnalysis(app);
    std::vector<ListRow> found = app.List().Rows();
    std::erase_if(found, [](const ListRow& row) { return !IsOurs(row); });
    CheckSameRows(found, expected);
}
