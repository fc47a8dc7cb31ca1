#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "console/row_formats.h"
#include "platform/folder_tree.h"
#include "tests/driver/console_program.h"
#include "tests/driver/wait.h"
#include "tests/e2e/program.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/shown_rows.h"
#include "tests/e2e/whole_registry.h"

namespace {

using Rows = std::vector<Row>;

std::string ConsoleExe() { return TestFolder() + "\\vellumor-cli.exe"; }

ConsoleResult RunConsoleExe(const std::string& arguments, const std::string& input = "") {
    return CConsoleProgram({ConsoleExe(), arguments, input}).Wait();
}

Rows RowsIn(const std::string& text) {
    const auto read = ReadRows(text);
    REQUIRE(std::holds_alternative<Rows>(read));
    return std::get<Rows>(read);
}

ListRow AsListed(const Row& row) { return {row.key, row.writeTime, row.valueName, row.dataReference}; }

/// The rows of what was planted, as an analysis writes them.
std::string OurRows(const std::string& text) {
    Rows rows = RowsIn(text);
    std::erase_if(rows, [](const Row& row) { return !IsOurs(AsListed(row)); });
    return WriteRows(rows, RowFormat::Json, true);
}

/// Checks that cleaning tells of each row what was done. @return how often it told each deed.
std::map<std::string, int> CountDeeds(const std::string& output) {
    std::map<std::string, int> deeds;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) ++deeds[line.substr(0, line.find(':'))];
    return deeds;
}

/// A token of the test's own user, in which the group of administrators does not count.
CUniqueHandle TokenWithoutRights() {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_ALL_ACCESS, token.Receive()) != FALSE);
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    PSID administrators = nullptr;
    REQUIRE(::AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0,
                                       0, 0, 0, 0, 0, &administrators) != FALSE);
    SID_AND_ATTRIBUTES disabled{administrators, 0};
    CUniqueHandle restricted;
    const BOOL isMade =
        ::CreateRestrictedToken(token.Get(), 0, 1, &disabled, 0, nullptr, 0, nullptr, restricted.Receive());
    ::FreeSid(administrators);
    REQUIRE(isMade != FALSE);
    return restricted;
}

}  // namespace

TEST_CASE("the console finds the rows of the window, in their order, each with check and reason" *
          doctest::test_suite("smoke")) {
    const CRulePlants plants;
    std::vector<ListRow> shown;
    {
        const FreshApp app;
        RunAnalysis(app);
        shown = app.List().Rows();
    }
    const ConsoleResult result = RunConsoleExe("analyze --format json");
    CHECK(result.exitCode == 1);
    CHECK(result.error == std::to_string(shown.size()) + " invalid entries found.\n");
    const Rows rows = RowsIn(result.output);
    std::vector<ListRow> listed;
    for (const Row& row : rows) listed.push_back(AsListed(row));
    CheckSameRows(listed, shown);
    std::set<std::string> checks;
    for (const Row& row : rows) {
        CAPTURE(row.key);
        checks.insert(row.check);
        CHECK(row.reason.ends_with("."));
    }
    CHECK(checks.size() == 45);
}

TEST_CASE("what an analysis wrote is cleaned row by row, and a replay brings all of it back") {
    DeleteFolderContents(TestFolder() + "\\Undo");
    const CRulePlants plants;
    const Tree before = ReadRegistry();
    const std::string named = OurRows(RunConsoleExe("analyze --format json").output);
    const std::size_t count = RowsIn(named).size();
    REQUIRE(count > 100);

    CHECK(RunConsoleExe("clean --rows - --dry-run", named).exitCode == 1);
    CHECK(Difference(before, ReadRegistry()) == "");

    const ConsoleResult cleaned = RunConsoleExe("clean --rows - --yes", named);
    CHECK(cleaned.exitCode == 0);
    CHECK(cleaned.error == "");
    std::map<std::string, int> deeds = CountDeeds(cleaned.output);
    CHECK(deeds["Undo file"] == 1);
    CHECK(deeds["value deleted"] > 0);
    CHECK(deeds["key removed"] > 0);
    CHECK(deeds["default emptied"] > 0);
    CHECK(deeds.size() <= 5);
    CHECK(static_cast<std::size_t>(std::ranges::count(cleaned.output, '\n')) == count + 1);
    REQUIRE(Difference(before, ReadRegistry()) != "");
    for (const Row& row : RowsIn(named)) {
        CAPTURE(row.key);
        CAPTURE(row.valueName);
        CHECK_FALSE(IsStillThere(AsListed(row)));
    }

    const std::string undoFiles = RunConsoleExe("undo list").output;
    const std::string name = undoFiles.substr(0, undoFiles.find(' '));
    CHECK(RunConsoleExe("undo replay " + name).exitCode == 0);
    // The program has waited for the editor, so nothing is left to wait for.
    CHECK(Difference(before, ReadRegistry()) == "");
    CHECK(RunConsoleExe("undo delete " + name).exitCode == 0);
    CHECK(RunConsoleExe("undo list").output.empty());
}

TEST_CASE("the exit code tells a script what became of its command") {
    CHECK(RunConsoleExe("--version").exitCode == 0);
    CHECK(RunConsoleExe("analyze --only wallpapers").exitCode == 0);
    CHECK(RunConsoleExe("analyze --only no-such-check").exitCode == 2);
    CHECK(RunConsoleExe("clean --all").exitCode == 2);
    const ConsoleResult truncated = RunConsoleExe("clean --rows - --yes", "{\"rows\": [{\"key\":");
    CHECK(truncated.exitCode == 3);
    CHECK(truncated.error.starts_with("The rows cannot be read: no whole json: "));
    CHECK(RunConsoleExe("undo replay ..\\vellumor.exe").exitCode == 3);
}

TEST_CASE("a disk that is full is told, and by the exit code") {
    const ConsoleResult result = CConsoleProgram({ConsoleExe(), "checks", "", R"(\\?\unix\dev\full)"}).Wait();
    CHECK(result.exitCode == 3);
    CHECK(result.error == "Standard output cannot be written.\n");
}

TEST_CASE("without administrator rights the program reads nothing and says so") {
    const CUniqueHandle token = TokenWithoutRights();
    const ConsoleResult result = CConsoleProgram({ConsoleExe(), "analyze", "", "", token.Get()}).Wait();
    CHECK(result.exitCode == 4);
    CHECK(result.output.empty());
    CHECK(result.error == "Administrator rights are missing. Start the command line as administrator.\n");
}
