#include <doctest/doctest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "console/interruption.h"
#include "console/row_formats.h"
#include "platform/program_folder.h"
#include "tests/console/shared_modules.h"
#include "tests/support/file_text.h"
#include "tests/support/planted_hives.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr char kFirst[] = R"(C:\gone\a.dll)";
constexpr char kSecond[] = R"(C:\gone\b.dll)";

using Rows = std::vector<Row>;

Rows RowsIn(const std::string& text) {
    const auto read = ReadRows(text);
    return std::holds_alternative<Rows>(read) ? std::get<Rows>(read) : Rows{};
}

using Json = nlohmann::json;

/// Checks an object's members against a schema's lists of them, needed ones and patterns.
void CheckMembers(const Json& schema, const Json& object) {
    CHECK(schema["required"].size() == object.size());
    for (const Json& name : schema["required"]) CHECK(object.contains(name.get<std::string>()));
    for (const auto& [name, member] : schema["properties"].items()) {
        CAPTURE(name);
        REQUIRE(object.contains(name));
        const std::string type = object[name].type_name();
        CHECK(type == member["type"].get<std::string>());
        if (member.contains("pattern"))
            CHECK(std::regex_search(object[name].get<std::string>(),
                                    std::regex(member["pattern"].get<std::string>())));
    }
}

struct AnalyzeBench : CConsoleBench {
    ExitCode Analyze(std::vector<std::string> options) {
        options.insert(options.begin(), {"analyze", "--only", "shared-modules"});
        return Run(options);
    }
    CSharedModules modules{kFirst, kSecond};
};

}  // namespace

TEST_CASE_FIXTURE(AnalyzeBench, "rows are written in the order of the analysis, and told by the exit code") {
    const Rows rows{CSharedModules::RowOf(kFirst), CSharedModules::RowOf(kSecond)};
    for (const char* format : {"csv", "json", "jsonl"}) {
        CAPTURE(std::string(format));
        CHECK((Analyze({"--format", format}) == ExitCode::RowsFound));
        CHECK(RowsIn(terminal.output) == rows);
        CHECK(terminal.error == "2 invalid entries found.\n");
    }
    CHECK(terminal.output == WriteRows(rows, RowFormat::JsonLines, true));
}

TEST_CASE_FIXTURE(AnalyzeBench, "text is a table with a line of headings") {
    CHECK((Analyze({}) == ExitCode::RowsFound));
    const std::vector<std::string> lines = LinesOf(terminal.output);
    REQUIRE(lines.size() == 3);
    for (const char* heading : {"KEY ", "WRITTEN (UTC)", "VALUE", "DATA", "CHECK", "REASON"})
        CHECK(lines[0].find(heading) != std::string::npos);
    CHECK(lines[1].find("shared-modules") == lines[0].find("CHECK"));
    CHECK(lines[1].find(kFirst) == lines[0].find("VALUE"));
    CHECK(lines[2].find(kSecond) != std::string::npos);
    terminal.outputWidth = 170;
    CHECK((Analyze({}) == ExitCode::RowsFound));
    CHECK(LinesOf(terminal.output).size() == 3);
    for (const std::string& line : LinesOf(terminal.output)) CHECK(line.size() <= 170);
}

TEST_CASE_FIXTURE(AnalyzeBench, "on a narrow terminal each row has a second line with check and reason") {
    terminal.outputWidth = 79;
    CHECK((Analyze({}) == ExitCode::RowsFound));
    const std::vector<std::string> lines = LinesOf(terminal.output);
    REQUIRE(lines.size() == 5);
    for (const std::string& line : lines) CHECK(line.size() <= 79);
    CHECK(lines[0].starts_with("KEY "));
    CHECK(lines[1].find(kFirst) == lines[0].find("VALUE"));
    CHECK(lines[2] == "    shared-modules: It names a program or library file that does not exist.");
    CHECK(lines[3].find(kSecond) != std::string::npos);
    CHECK(lines[4] == lines[2]);
}

TEST_CASE_FIXTURE(AnalyzeBench, "names that could steer a terminal are shown, not sent") {
    modules.Add("C:\\gone\\\x1B[2J.dll");
    CHECK((Analyze({}) == ExitCode::RowsFound));
    CHECK(terminal.output.find('\x1B') == std::string::npos);
    CHECK(terminal.output.find(R"(C:\gone\\x1B[2J.dll)") != std::string::npos);
}

TEST_CASE_FIXTURE(AnalyzeBench, "patterns choose rows by their keys") {
    const struct {
        std::vector<std::string> options;
        std::size_t rows;
    } cases[] = {
        {{"--match", "*\\shareddlls"}, 2},
        {{"--match", "HKEY_CURRENT_USER\\*"}, 0},
        {{"--exclude", "*\\shareddlls"}, 0},
        {{"--exclude", "HKEY_CURRENT_USER\\*", "HKEY_USERS\\*"}, 2},
        {{"--exclude", "HKEY_CURRENT_USER\\*", "--exclude", "*\\shareddlls"}, 0},
        {{"--match", "*", "--exclude", "*\\SharedDlls"}, 0},
        {{"--skip", "shared-modules"}, 0},
        {{"--only", "fonts", "--skip", "fonts"}, 2},
    };
    for (const auto& row : cases) {
        CAPTURE(row.options.back());
        std::vector<std::string> options = row.options;
        options.insert(options.end(), {"--format", "csv"});
        CHECK((Analyze(options) == (row.rows == 0 ? ExitCode::Done : ExitCode::RowsFound)));
        CHECK(RowsIn(terminal.output).size() == row.rows);
    }
    for (const std::vector<std::string>& line :
         {std::vector<std::string>{"analyze", "--only", "wallpapers,run-box"},
          {"analyze", "--only", "wallpapers", "run-box"},
          {"analyze", "--only", "shared-modules", "run-box", "--skip", "fonts", "shared-modules"}}) {
        CHECK((Run(line) == ExitCode::Done));
        CHECK(terminal.output.empty());
        CHECK(terminal.error == "No invalid entry found.\n");
    }
    CHECK((Run({"analyze", "--only", "wallpapers", "shared-modules"}) == ExitCode::RowsFound));
}

TEST_CASE_FIXTURE(AnalyzeBench,
                  "a file gets the rows when all of them are written, in place of its former text") {
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\rows.csv";
    WriteFileText(file, "former");
    terminal.onError = [&](const std::string& text) {
        if (text.starts_with("\rStage")) CHECK(FileText(file) == "former");
    };
    terminal.errorWidth = 80;  // the progress line is written during the analysis
    CHECK((Analyze({"--format", "csv", "--output", file}) == ExitCode::RowsFound));
    CHECK(terminal.output.empty());
    terminal.onError = nullptr;
    CHECK(RowsIn(FileText(file)).size() == 2);
    CHECK_FALSE(Exists(file + ".partial"));
}

TEST_CASE_FIXTURE(AnalyzeBench, "a place that cannot be written is told before the analysis") {
    const CScratchFolder folder;
    terminal.errorWidth = 80;
    const std::string locked = folder.Path() + "\\locked.csv";
    WriteFileText(locked, "former");
    ::SetFileAttributesA(locked.c_str(), FILE_ATTRIBUTE_READONLY);
    for (const std::string& file : {folder.Path() + "\\none\\rows.csv", folder.Path(), locked}) {
        CHECK((Analyze({"--output", file}) == ExitCode::Failed));
        CHECK(terminal.error == file + " cannot be written.\n");
        CHECK_FALSE(Exists(file + ".partial"));
    }
    CHECK(FileText(locked) == "former");
    ::SetFileAttributesA(locked.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_CASE_FIXTURE(AnalyzeBench, "rows whose file cannot be replaced stay beside it, and are named") {
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\rows.csv";
    WriteFileText(file, "former");
    {
        const CUniqueFile held(::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        REQUIRE(static_cast<bool>(held));
        CHECK((Analyze({"--format", "csv", "--output", file}) == ExitCode::Failed));
    }
    CHECK(terminal.error == file + " cannot be replaced; the rows are in " + file + ".partial.\n");
    CHECK(FileText(file) == "former");
    CHECK(RowsIn(FileText(file + ".partial")).size() == 2);
}

TEST_CASE_FIXTURE(AnalyzeBench, "rows that cannot be written are a failure") {
    terminal.refusesOutput = true;
    CHECK((Analyze({"--format", "json"}) == ExitCode::Failed));
    CHECK(terminal.error == "The rows could not all be written.\n");
}

TEST_CASE_FIXTURE(AnalyzeBench, "the progress line tells stage, rows, time and key, and is gone at the end") {
    terminal.errorWidth = 60;
    std::string line;
    terminal.onError = [&](const std::string& text) {
        if (line.empty() && text.starts_with("\rStage ")) line = text;
        CHECK(text.size() <= 62);  // with what returns to the line's beginning
    };
    CHECK((Analyze({"--skip", "fonts"}) == ExitCode::RowsFound));
    CHECK(line.starts_with("\rStage 10 of 10, 0 rows, 0:00, \\HKEY_LOCAL"));
    const std::size_t end = terminal.error.rfind('\r');
    CHECK(terminal.error.substr(end) == "\r2 invalid entries found.\n");
    terminal.onError = nullptr;
    terminal.errorWidth.reset();
    CHECK((Analyze({}) == ExitCode::RowsFound));
    CHECK(terminal.error == "2 invalid entries found.\n");
}

TEST_CASE("the progress line counts the rows that the patterns leave") {
    CScratchKey key(HKEY_LOCAL_MACHINE);
    SetText(key.Get(), "x", R"(C:\gone\before.dll)");
    CConsoleBench bench;
    bench.terminal.errorWidth = 200;
    std::size_t lines = 0;
    bench.terminal.onError = [&](const std::string& text) {
        if (text.find("Stage ") == std::string::npos) return;
        ++lines;
        CHECK(text.find(", 0 rows, ") != std::string::npos);
    };
    CHECK((bench.Run({"analyze", "--only", "dead-files-of-the-machine", "--match", "HKEY_USERS\\*"}) ==
           ExitCode::Done));
    CHECK(lines > 2);
}

TEST_CASE("what an analysis writes is as the schema describes it") {
    CScratchKey key(HKEY_LOCAL_MACHINE);
    SetText(key.Get(), "x", R"(C:\gone\before.dll)");
    const CSharedModules modules{kFirst};
    CConsoleBench bench;
    CHECK((bench.Run({"analyze", "--only", "dead-files-of-the-machine,shared-modules", "--format", "json"}) ==
           ExitCode::RowsFound));
    const Json schema = Json::parse(FileText(ProgramFolder() + "\\..\\..\\docs\\rows.schema.json"));
    const Json written = Json::parse(bench.terminal.output);
    CheckMembers(schema, written);
    std::size_t timed = 0;
    for (const Json& row : written["rows"]) {
        CheckMembers(schema["properties"]["rows"]["items"], row);
        if (row["write_time"] != "") ++timed;
    }
    CHECK(timed > 0);
    CHECK(timed < written["rows"].size());
}

TEST_CASE("Ctrl+C ends an analysis, whose rows so far are kept") {
    CScratchKey key(HKEY_LOCAL_MACHINE);
    SetText(key.Get(), "x", R"(C:\gone\before.dll)");
    CConsoleBench bench;
    bench.terminal.errorWidth = 200;
    bench.terminal.onError = [](const std::string& text) {
        // Not every key is shown, but by then rows have been found.
        if (text.find("Stage ") != std::string::npos && text.find(", 0 rows, ") == std::string::npos)
            CHECK(Interrupt());
    };
    CHECK((bench.Run({"analyze", "--format", "json"}) == ExitCode::Canceled));
    CHECK(bench.terminal.output.starts_with("{\"complete\": false, \"rows\": ["));
    const Rows rows = RowsIn(bench.terminal.output);
    REQUIRE_FALSE(rows.empty());
    CHECK(rows.front().check == "dead-files-of-the-machine");
    CHECK(bench.terminal.error.ends_with(std::to_string(rows.size()) +
                                         (rows.size() == 1 ? " invalid entry" : " invalid entries") +
                                         " found by then; the analysis was canceled.\n"));
    // Nobody is left whom it could stop in an orderly way.
    CHECK_FALSE(Interrupt());
}
