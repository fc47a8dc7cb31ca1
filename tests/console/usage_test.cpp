#include <doctest/doctest.h>

#include <set>

#include "analysis/check.h"
#include "platform/version.h"
#include "tests/console/console_bench.h"

namespace {

using Line = std::vector<std::string>;

}  // namespace

TEST_CASE("a wrong command line is told on standard error, and nothing is done") {
    const Line lines[] = {
        {},
        {"nonsense"},
        {"analyze", "nonsense"},
        {"analyze", "--format", "xml"},
        {"analyze", "--only", "no-such-check"},
        {"analyze", "--skip", "fonts,no-such-check"},
        {"analyze", "--rows", "x"},
        {"clean"},
        {"clean", "--yes"},
        {"clean", "--all", "--rows", "x", "--yes"},
        {"clean", "--rows", "x", "--only", "fonts", "--yes"},
        {"undo"},
        {"undo", "replay"},
        {"undo", "delete"},
        {"restore"},
        {"restore", "apply"},
        {"restore", "apply", "x", "--restart", "later"},
        {"restore", "apply", "x", "--restart", "1"},
        {"backup", "--restart"},
        {"backup", "--restart", "2"},
        {"backup", "--restart", "NOW"},
        {"compact", "--restart", "2"},
        {"compact", "now"},
        {"restore", "delete", "[old]"},
        {"undo", "delete", "[a.reg,b.reg]"},
        {"analyze", "--exclude", "[a]"},
        {"analyze", "--exclude=[a]"},
    };
    CConsoleBench bench;
    for (const Line& line : lines) {
        CAPTURE(line.empty() ? std::string() : line.back());
        CHECK((bench.Run(line) == ExitCode::WrongUsage));
        CHECK(bench.terminal.output.empty());
        CHECK(bench.terminal.error.ends_with("Run with --help for more information.\n"));
    }
    CHECK(bench.actions.asked.empty());
    CHECK(bench.actions.saves.empty());
    CHECK(bench.actions.restarts == 0);
}

TEST_CASE("an unknown check is named, with where to find the others") {
    CConsoleBench bench;
    CHECK((bench.Run({"analyze", "--only", "no-such-check"}) == ExitCode::WrongUsage));
    CHECK(LinesOf(bench.terminal.error)[0] ==
          "--only: no check is named no-such-check; the command \"checks\" lists them");
}

TEST_CASE("a failure that no command foresees is told in one line, and by the exit code") {
    CConsoleBench bench;
    bench.terminal.onReadInput = [] { throw std::bad_alloc(); };
    CHECK((bench.Run({"clean", "--rows", "-", "--yes"}) == ExitCode::Failed));
    CHECK(bench.terminal.output.empty());
    CHECK(bench.terminal.error == "The program has failed: std::bad_alloc\n");
}

TEST_CASE("each command tells of its options, and of the exit codes") {
    const Line commands[] = {{},
                             {"analyze"},
                             {"clean"},
                             {"undo"},
                             {"undo", "list"},
                             {"undo", "replay"},
                             {"undo", "delete"},
                             {"backup"},
                             {"restore"},
                             {"restore", "list"},
                             {"restore", "apply"},
                             {"restore", "delete"},
                             {"compact"},
                             {"checks"}};
    CConsoleBench bench;
    bench.actions.isAdministrator = false;
    for (Line line : commands) {
        line.emplace_back("--help");
        CHECK((bench.Run(line) == ExitCode::Done));
        CHECK(bench.terminal.output.find("Usage:") != std::string::npos);
        CHECK(bench.terminal.output.find("130 canceled") != std::string::npos);
        CHECK(bench.terminal.error.empty());
    }
}

TEST_CASE("the version names the program, its architecture and its commit") {
    CConsoleBench bench;
    CHECK((bench.Run({"--version"}) == ExitCode::Done));
    CHECK(bench.terminal.output == VersionLine("Vellumor v4.55") + "\n");
}

TEST_CASE("the checks are listed once each, with name, area and meaning") {
    CConsoleBench bench;
    bench.actions.isAdministrator = false;
    CHECK((bench.Run({"checks"}) == ExitCode::Done));
    const Line lines = LinesOf(bench.terminal.output);
    REQUIRE(AllChecks().size() == 45);
    REQUIRE(lines.size() == 46);
    std::set<std::string> names;
    for (std::size_t index = 0; index < 45; ++index) {
        const Check check = AllChecks()[index];
        names.insert(check.name);
        CHECK(lines[index + 1].starts_with(check.name + std::string("  ")));
        CHECK(lines[index + 1].find(check.area) != std::string::npos);
        CHECK(lines[index + 1].ends_with(check.meaning));
        CHECK(std::string(check.meaning).ends_with("."));
    }
    CHECK(names.size() == 45);
    bench.terminal.refusesOutput = true;
    for (const char* command : {"checks", "--help", "--version"}) {
        CHECK((bench.Run({command}) == ExitCode::Failed));
        CHECK(bench.terminal.error == "Standard output cannot be written.\n");
    }
}

TEST_CASE("without administrator rights nothing is read and nothing changed") {
    const Line lines[] = {{"analyze"},
                          {"clean", "--all", "--yes"},
                          {"clean", "--all", "--dry-run"},
                          {"undo", "replay", "2009.05.14.16.03.27.reg"},
                          {"undo", "delete", "2009.05.14.16.03.27.reg"},
                          {"backup"},
                          {"restore", "apply", "2009.05.14.16.03.07"},
                          {"restore", "delete", "2009.05.14.16.03.07"},
                          {"compact"}};
    CConsoleBench bench;
    bench.actions.isAdministrator = false;
    for (const Line& line : lines) {
        CAPTURE(line.back());
        CHECK((bench.Run(line) == ExitCode::RightsMissing));
        CHECK(bench.terminal.output.empty());
        CHECK(bench.terminal.error ==
              "Administrator rights are missing. Start the command line as administrator.\n");
    }
    CHECK(bench.actions.asked.empty());
    CHECK(bench.actions.saves.empty());
}
