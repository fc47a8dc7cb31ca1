#include "tests/hostile/host_program.h"

#include <doctest/doctest.h>

#include "console/row_formats.h"
#include "tests/e2e/program.h"
#include "tests/hostile/hostile_registry.h"

CHostProgram::CHostProgram() {
    for (const char* file : {"vellumor-cli.exe", "vellumor.exe"})
        REQUIRE(::CopyFileA((TestFolder() + "\\" + file).c_str(), (m_folder.Path() + "\\" + file).c_str(),
                            FALSE) != FALSE);
    // With the first window of all, the platform writes down its devices.
    REQUIRE(Run("analyze --only wallpapers").exitCode <= 1);
}

ConsoleResult CHostProgram::Run(const std::string& arguments, const std::string& input) const {
    return CConsoleProgram({m_folder.Path() + "\\vellumor-cli.exe", arguments, input}).Wait();
}

std::vector<Row> CHostProgram::Analyze(const std::string& choice) const {
    return CheckAnalysis(Run("analyze --format json " + choice));
}

std::string CHostProgram::UndoFile() const {
    const std::string list = Run("undo list").output;
    return list.substr(0, list.find(' '));
}

bool IsPlanted(const Row& row) {
    const auto marked = [](const std::string& text) { return text.find(kMark) != std::string::npos; };
    return marked(row.key) || marked(row.valueName) || marked(row.dataReference);
}

std::vector<Row> CheckAnalysis(const ConsoleResult& result) {
    // A program that crashes can end with any exit code, but not with the end of its output.
    CHECK(result.exitCode == 1);
    CHECK(result.output.starts_with("{\"complete\": true,"));
    auto read = ReadRows(result.output);
    REQUIRE(std::holds_alternative<std::vector<Row>>(read));
    auto& rows = std::get<std::vector<Row>>(read);
    CHECK(result.error == std::to_string(rows.size()) + " invalid entries found.\n");
    for (const Row& row : rows) {
        CHECK(row.key.starts_with("\\HKEY_"));
        CHECK_FALSE(row.check.empty());
        CHECK_FALSE(row.reason.empty());
    }
    std::erase_if(rows, [](const Row& row) { return !IsPlanted(row); });
    return std::move(rows);
}
