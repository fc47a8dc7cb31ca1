#include <doctest/doctest.h>

#include <cstdio>

#include "tests/support/program_files.h"
#include "tests/ui/shell.h"

namespace {

constexpr UINT kClean = 32807;
constexpr char kScratch[] = "VellumorCleanTest";

/// The program's window over a list whose rows name values and keys that are really there.
struct CleanBench {
    CRecordingActions actions;
    CProgramSubfolder undo{"Undo"};
    CShell shell;

    CleanBench() {
        actions.answer = [this](const CRecordingActions::Message&) { return reply; };
    }
    ~CleanBench() {
        for (const char* key : {"a", "b", "c", "d"}) ::RegDeleteKeyA(HKEY_CURRENT_USER, Path(key).c_str());
        ::RegDeleteKeyA(HKEY_CURRENT_USER, kScratch);
    }

    static std::string Path(const std::string& key) { return std::string(kScratch) + "\\" + key; }

    /// Adds a row for a value "dead" of a key, which is made.
    void AddRow(const std::string& key) const {
        HKEY opened = nullptr;
        ::RegCreateKeyA(HKEY_CURRENT_USER, Path(key).c_str(), &opened);
        ::RegSetValueExA(opened, "dead", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2);
        ::RegCloseKey(opened);
        shell.SendRow(("\\HKEY_CURRENT_USER\\" + Path(key)).c_str(), "2009/03/05 07:08:09", "dead", "x");
    }
    [[nodiscard]] static bool IsThere(const std::string& key) {
        HKEY opened = nullptr;
        if (::RegOpenKeyA(HKEY_CURRENT_USER, Path(key).c_str(), &opened) != ERROR_SUCCESS) return false;
        const bool found =
            ::RegQueryValueExA(opened, "dead", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
        ::RegCloseKey(opened);
        return found;
    }
    [[nodiscard]] std::string OnlyUndoText() const { return OnlyText(".reg"); }
    /// What the undo file's companion holds.
    [[nodiscard]] std::string OnlyBranches() const { return OnlyText(".branches"); }
    [[nodiscard]] int Rows() const { return shell.View().GetItemCount(); }

    int reply = IDOK;

private:
    /// The text of the one file of an ending; one of the other ending is beside it.
    [[nodiscard]] std::string OnlyText(const std::string& ending) const {
        const auto files = undo.Files();
        REQUIRE(files.size() == 2);
        const std::string& file = files[0].ends_with(ending) ? files[0] : files[1];
        REQUIRE(file.ends_with(ending));
        return TextOfFile(undo.Path() + "\\" + file);
    }
};

void CheckMessage(const CRecordingActions::Message& message, const char* text, const char* caption,
                  UINT flags) {
    CHECK(message.text == text);
    CHECK(message.caption == caption);
    CHECK(message.flags == flags);
}

/// Seconds of a dotted local time since some fixed moment, counting all months alike.
long long Seconds(const std::string& name) {
    int part[6] = {};
    REQUIRE(std::sscanf(name.c_str(), "%4d.%2d.%2d.%2d.%2d.%2d", &part[0], &part[1], &part[2], &part[3],
                        &part[4], &part[5]) == 6);
    long long seconds = 0;
    constexpr int kScale[] = {1, 12, 31, 24, 60, 60};
    for (int index = 0; index < 6; ++index) seconds = seconds * kScale[index] + part[index];
    return seconds;
}

std::string LocalNow() {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04d.%02d.%02d.%02d.%02d.%02d", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

}  // namespace

TEST_CASE("cleaning with no row checked says so, and changes nothing") {
    CleanBench bench;
    bench.AddRow("a");
    bench.shell.Command(kClean);
    REQUIRE(bench.actions.messages.size() == 1);
    CheckMessage(bench.actions.messages[0],
                 "Please check more than one line in the invalid registry entries list to clean.",
                 "Vellumor v4.55", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.Rows() == 1);
    CHECK(CleanBench::IsThere("a"));
    CHECK_FALSE(bench.undo.Exists());
}

TEST_CASE("cleaning one checked row asks for it by name, repairs it and reports its key") {
    CleanBench bench;
    for (const char* key : {"a", "b", "c"}) bench.AddRow(key);
    bench.shell.View().SetCheck(1, true);
    bench.shell.Command(kClean);
    REQUIRE(bench.actions.messages.size() == 2);
    CheckMessage(bench.actions.messages[0],
                 R"(Clean the invalid registry entry: \HKEY_CURRENT_USER\VellumorCleanTest\b\"dead"?)",
                 "Cleaning", MB_OKCANCEL | MB_ICONQUESTION);
    CheckMessage(bench.actions.messages[1],
                 R"(Invalid registry entry: \HKEY_CURRENT_USER\VellumorCleanTest\b cleaned successfully.)",
                 "Vellumor v4.55", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.Rows() == 2);
    CHECK(bench.shell.Cell(0, 0) == R"(\HKEY_CURRENT_USER\VellumorCleanTest\a)");
    CHECK(bench.shell.Cell(1, 0) == R"(\HKEY_CURRENT_USER\VellumorCleanTest\c)");
    CHECK(CleanBench::IsThere("a"));
    CHECK_FALSE(CleanBench::IsThere("b"));
    CHECK(CleanBench::IsThere("c"));
    CHECK(bench.OnlyUndoText() ==
          "Windows Registry Editor Version 5.00\r\n\r\n"
          "[HKEY_CURRENT_USER\\VellumorCleanTest\\b]\r\n\"dead\"=\"x\"\r\n\r\n");
}

TEST_CASE("a row without a value name is asked for by its key alone") {
    CleanBench bench;
    bench.reply = IDCANCEL;
    bench.shell.SendRow(R"(\HKEY_CURRENT_USER\a)", "", "", "x");
    bench.shell.View().SetCheck(0, true);
    bench.shell.Command(kClean);
    REQUIRE(bench.actions.messages.size() == 1);
    CHECK(bench.actions.messages[0].text == R"(Clean the invalid registry entry: \HKEY_CURRENT_USER\a?)");
}

TEST_CASE(
    "cleaning several rows asks for their number, goes from the last to the first and reports the number") {
    CleanBench bench;
    for (const char* key : {"a", "b", "c", "d"}) bench.AddRow(key);
    for (const int row : {0, 1, 3}) bench.shell.View().SetCheck(row, true);
    bench.shell.Command(kClean);
    REQUIRE(bench.actions.messages.size() == 2);
    CheckMessage(bench.actions.messages[0], "Clean the selected 3 invalid registry entries? ", "Cleaning",
                 MB_OKCANCEL | MB_ICONQUESTION);
    CheckMessage(bench.actions.messages[1], "3 selected invalid registry entries cleaned successfully.",
                 "Vellumor v4.55", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.Rows() == 1);
    CHECK(bench.shell.Cell(0, 0) == R"(\HKEY_CURRENT_USER\VellumorCleanTest\c)");
    CHECK(CleanBench::IsThere("c"));
    for (const char* key : {"a", "b", "d"}) CHECK_FALSE(CleanBench::IsThere(key));
    // One file, one header, the last row's export first.
    CHECK(bench.OnlyUndoText() ==
          "Windows Registry Editor Version 5.00\r\n\r\n"
          "[HKEY_CURRENT_USER\\VellumorCleanTest\\d]\r\n\"dead\"=\"x\"\r\n\r\n\r\n"
          "[HKEY_CURRENT_USER\\VellumorCleanTest\\b]\r\n\"dead\"=\"x\"\r\n\r\n\r\n"
          "[HKEY_CURRENT_USER\\VellumorCleanTest\\a]\r\n\"dead\"=\"x\"\r\n\r\n");
    CHECK(bench.OnlyBranches() ==
          "HKEY_CURRENT_USER\\VellumorCleanTest\\d\r\nHKEY_CURRENT_USER\\VellumorCleanTest\\b\r\n"
          "HKEY_CURRENT_USER\\VellumorCleanTest\\a\r\n");
}

TEST_CASE("cancelling either question changes nothing; the folder is made and no undo file") {
    for (const int checked : {1, 2}) {
        CleanBench bench;
        bench.reply = IDCANCEL;
        for (const char* key : {"a", "b"}) bench.AddRow(key);
        for (int row = 0; row < checked; ++row) bench.shell.View().SetCheck(row, true);
        bench.shell.Command(kClean);
        CHECK(bench.actions.messages.size() == 1);
        CHECK(bench.Rows() == 2);
        CHECK(CleanBench::IsThere("a"));
        CHECK(CleanBench::IsThere("b"));
        CHECK(bench.undo.Exists());
        CHECK(bench.undo.Files().empty());
        for (int row = 0; row < checked; ++row) CHECK(bench.shell.View().GetCheck(row));
    }
}

TEST_CASE("a row whose repair fails leaves the list and is counted all the same") {
    CleanBench bench;
    bench.AddRow("a");
    bench.shell.SendRow(R"(\HKEY_CURRENT_USER\VellumorAbsent)", "", "x", "x");
    bench.shell.SendRow("no key at all", "", "x", "x");
    for (int row = 0; row < 3; ++row) bench.shell.View().SetCheck(row, true);
    bench.shell.Command(kClean);
    CHECK(bench.actions.messages.back().text == "3 selected invalid registry entries cleaned successfully.");
    CHECK(bench.Rows() == 0);
    CHECK_FALSE(CleanBench::IsThere("a"));
}

TEST_CASE("an undo file is named by the local time, beside the program") {
    CleanBench bench;
    bench.AddRow("a");
    bench.shell.View().SetCheck(0, true);
    const std::string before = LocalNow();
    bench.shell.Command(kClean);
    const std::string after = LocalNow();
    const auto files = bench.undo.Files();
    REQUIRE(files.size() == 2);
    CHECK(files[0] == files[1].substr(0, files[1].size() - 4) + ".branches");
    CHECK(files[1].size() == std::string("2009.05.14.16.03.27.reg").size());
    CHECK(files[1].ends_with(".reg"));
    CHECK(Seconds(files[1]) >= Seconds(before));
    CHECK(Seconds(files[1]) <= Seconds(after));
}

TEST_CASE("every Clean command names a file of its own; within one second both share it") {
    CleanBench bench;
    for (const char* key : {"a", "b"}) bench.AddRow(key);
    bench.shell.View().SetCheck(0, true);
    const std::string before = LocalNow();
    bench.shell.Command(kClean);
    bench.shell.View().SetCheck(0, true);
    bench.shell.Command(kClean);
    const bool sameSecond = LocalNow() == before;
    const auto files = bench.undo.Files();
    // Each has its companion.
    if (sameSecond) CHECK(files.size() == 2);
    CHECK(files.size() <= 4);
    std::string texts;
    for (const std::string& file : files) texts += TextOfFile(bench.undo.Path() + "\\" + file);
    CHECK(texts.find("VellumorCleanTest\\a]") != std::string::npos);
    CHECK(texts.find("VellumorCleanTest\\b]") != std::string::npos);
}

TEST_CASE("the Delete key cleans the checked rows") {
    CleanBench bench;
    bench.AddRow("a");
    bench.shell.View().SetCheck(0, true);
    ::SendMessageA(bench.shell.ListWindow(), WM_KEYDOWN, VK_DELETE, 0);
    CHECK(bench.Rows() == 0);
    CHECK_FALSE(CleanBench::IsThere("a"));
}

TEST_CASE("where the Undo folder cannot be made the repair goes ahead") {
    CleanBench bench;
    bench.AddRow("a");
    bench.shell.View().SetCheck(0, true);
    // A file of that name is in the way.
    const HANDLE file =
        ::CreateFileA(bench.undo.Path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    ::CloseHandle(file);
    bench.shell.Command(kClean);
    CHECK(bench.Rows() == 0);
    CHECK_FALSE(CleanBench::IsThere("a"));
}

TEST_CASE("all of five thousand rows are cleaned by one command into one file") {
    CleanBench bench;
    for (const char* key : {"a", "b"}) bench.AddRow(key);
    for (int row = 2; row < 5000; ++row)
        bench.shell.SendRow(R"(\HKEY_CURRENT_USER\VellumorCleanTest\a)", "",
                            ("value" + std::to_string(row)).c_str(), "x");
    REQUIRE(bench.Rows() == 5000);
    bench.shell.Command(32825);
    bench.shell.Command(kClean);
    CHECK(bench.Rows() == 0);
    CHECK(bench.actions.messages.back().text ==
          "5000 selected invalid registry entries cleaned successfully.");
    const std::string text = bench.OnlyUndoText();
    CHECK(text.rfind("Windows Registry Editor") == 0);
    std::size_t exports = 0;
    for (std::size_t at = text.find("\n["); at != std::string::npos; at = text.find("\n[", at + 1)) ++exports;
    CHECK(exports == 5000);
    CHECK_FALSE(CleanBench::IsThere("a"));
    CHECK_FALSE(CleanBench::IsThere("b"));
}
