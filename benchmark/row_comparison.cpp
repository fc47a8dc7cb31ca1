#include "benchmark/row_comparison.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <variant>
#include <vector>

#include "benchmark/programs.h"
#include "benchmark/registry_maker.h"
#include "console/row_formats.h"
#include "platform/owners.h"
#include "platform/program_folder.h"
#include "tests/driver/app_driver.h"
#include "tests/support/file_text.h"

namespace {

constexpr DWORD kEndPatience = 3'600'000;  // milliseconds
constexpr char kGone[] = R"(C:\Program Files\Gone\)";

/// What makes a row, its time left out.
using Cells = std::vector<std::string>;
using Table = std::vector<Cells>;

Table RowsOfWindow() {
    const CAppDriver app(ProgramFolder() + "\\vellumor.exe");
    app.Post(commands::kAnalyze);
    (void)app.WaitForMessageBox(kEndPatience);
    Table table;
    for (const ListRow& row : app.List().Rows()) table.push_back({row.key, row.valueName, row.dataReference});
    return table;
}

Table RowsOfConsole() {
    const std::string file = ProgramFolder() + "\\bench-rows.json";
    (void)TimeProgram("\"" + ProgramFolder() + "\\vellumor-cli.exe\" analyze --format json --output \"" +
                      file + "\"");
    const auto read = ReadRows(FileText(file));
    if (!std::holds_alternative<std::vector<Row>>(read))
        throw std::runtime_error("the program for scripts wrote no rows");
    Table table;
    for (const Row& row : std::get<std::vector<Row>>(read))
        table.push_back({row.key, row.valueName, row.dataReference});
    return table;
}

/// Adds the values of a tree that name a file which is gone, as they are enumerated.
void AddGoneFiles(HKEY key, const std::string& path, Table& table) {
    char name[256];
    char data[512];
    for (DWORD index = 0;; ++index) {
        DWORD nameBytes = sizeof name;
        DWORD dataBytes = sizeof data;
        if (::RegEnumValueA(key, index, name, &nameBytes, nullptr, nullptr, reinterpret_cast<BYTE*>(data),
                            &dataBytes) != ERROR_SUCCESS)
            break;
        const std::string text(data, std::find(data, data + dataBytes, '\0'));
        if (text.starts_with(kGone)) table.push_back({path, name, text});
    }
    for (DWORD index = 0; ::RegEnumKeyA(key, index, name, sizeof name) == ERROR_SUCCESS; ++index) {
        CUniqueKey subkey;
        if (::RegOpenKeyExA(key, name, 0, KEY_READ, subkey.Receive()) == ERROR_SUCCESS)
            AddGoneFiles(subkey.Get(), path + "\\" + name, table);
    }
}

Table RowsOfPlainWalk() {
    CUniqueKey key;
    Table table;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kScratchKey, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS)
        AddGoneFiles(key.Get(), kScratchPath, table);
    return table;
}

std::string TextOf(const Table& table, std::size_t row) {
    if (row >= table.size()) return "no row";
    return table[row][0] + " | " + table[row][1] + " | " + table[row][2];
}

void RequireEqual(const Table& found, const Table& expected, const std::string& what) {
    if (found == expected) return;
    std::size_t row = 0;
    while (row < found.size() && row < expected.size() && found[row] == expected[row]) ++row;
    throw std::runtime_error(what + " differ at row " + std::to_string(row) + ": " + TextOf(found, row) +
                             " instead of " + TextOf(expected, row));
}

}  // namespace

std::string CompareRows() {
    const Table window = RowsOfWindow();
    RequireEqual(RowsOfConsole(), window, "the rows of the program for scripts and of the window");
    Table ofScratchKey;
    const auto isOfScratchKey = [](const Cells& row) {
        return ::lstrcmpiA(row[0].substr(0, sizeof kScratchPath - 1).c_str(), kScratchPath) == 0;
    };
    std::ranges::copy_if(window, std::back_inserter(ofScratchKey), isOfScratchKey);
    if (ofScratchKey.empty()) throw std::runtime_error("the scratch key has no rows");
    const Table expected = RowsOfPlainWalk();
    for (Cells& row : ofScratchKey) row[0].replace(0, sizeof kScratchPath - 1, kScratchPath);
    RequireEqual(ofScratchKey, expected, "the rows of the window and of a plain walk");
    return std::to_string(window.size()) + " rows in the window and for scripts, " +
           std::to_string(expected.size()) + " of them as a plain walk expects them";
}
