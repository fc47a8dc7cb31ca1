#include <doctest/doctest.h>

#include "analysis/classes/software_checks.h"
#include "check_support.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr const char* kRun = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const std::string kRunRow = "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run||";

std::string RowsOfRun(const std::string& name, const std::string& data) {
    CScratchRegistry registry;
    registry.AddText(HKEY_LOCAL_MACHINE, kRun, name, data);
    return RowsOf(&CheckRunEntries);
}

constexpr const char* kMuiCache = "SOFTWARE\\Microsoft\\Windows\\ShellNoRoam\\MUICache";
const std::string kMuiRow = "\\HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\ShellNoRoam\\MUICache||";

std::string RowsOfMuiCache(const std::string& name, const std::string& data) {
    CScratchRegistry registry;
    registry.AddText(HKEY_CURRENT_USER, kMuiCache, name, data);
    return RowsOf(&CheckMuiCache);
}

}  // namespace

TEST_CASE("a Run entry whose program exists is reported with its full data") {
    const CScratchFolder folder;
    const std::string program = folder.AddFile("app.exe");
    CHECK(RowsOfRun("x", program) == kRunRow + "x|" + program + "\n");
    CHECK(RowsOfRun("x", program + " /s") == kRunRow + "x|" + program + " /s\n");
    CHECK(RowsOfRun("x", program + ".bak") == kRunRow + "x|" + program + ".bak\n");
    CHECK(RowsOfRun("", program) == kRunRow + "|" + program + "\n");
    CHECK(RowsOfRun("x", folder.AddFolder("dir.exe") + " y") ==
          kRunRow + "x|" + folder.Path() + "\\dir.exe y\n");
}

TEST_CASE("a Run entry whose program is gone is not reported") {
    const CScratchFolder folder;
    CHECK(RowsOfRun("x", folder.Path() + "\\gone.exe /s").empty());
    CHECK(
        RowsOfRun("x", "\"" + folder.AddFile("app.exe") + "\" /s").empty());  // the quote belongs to the path
    CHECK(RowsOfRun("x", "%TEMP%\\..\\" + folder.Path().substr(3) + "\\app.exe").empty());
}

TEST_CASE("the extension of a Run entry's program is looked for in small letters, then in capitals") {
    const CScratchFolder folder;
    const std::string program = folder.Path() + "\\app";
    (void)folder.AddFile("app.exe");
    CHECK(RowsOfRun("x", program + ".EXE /s") == kRunRow + "x|" + program + ".EXE /s\n");
    CHECK(RowsOfRun("x", program + ".Exe /s").empty());
    CHECK(RowsOfRun("x", program + ".EXE " + program + ".exe").empty());  // cut behind the small letters
    CHECK(RowsOfRun("x", program + ".exe " + program + ".EXE") != "");
}

TEST_CASE("a Run entry whose data hold no .exe is reported only when name and data are both empty") {
    const CScratchFolder folder;
    CHECK(RowsOfRun("x", folder.AddFile("app.com")).empty());
    CHECK(RowsOfRun("x", "").empty());
    CHECK(RowsOfRun("", "y").empty());
    CHECK(RowsOfRun("", "") == kRunRow + "|\n");
}

TEST_CASE("names and data of Run entries are read into 250 bytes, larger ones are passed over") {
    const CScratchFolder folder;
    const std::string program = folder.AddFile("app.exe");
    const auto dataOf = [&](std::size_t bytes) {
        return program + std::string(bytes - 1 - program.size(), '-');
    };
    for (const std::size_t bytes : {std::size_t{249}, std::size_t{250}})
        CHECK(RowsOfRun("x", dataOf(bytes)) == kRunRow + "x|" + dataOf(bytes) + "\n");
    CHECK(RowsOfRun("x", dataOf(251)).empty());
    for (const std::size_t length : {std::size_t{248}, std::size_t{249}})
        CHECK(RowsOfRun(std::string(length, 'n'), program) ==
              kRunRow + std::string(length, 'n') + "|" + program + "\n");
    CHECK(RowsOfRun(std::string(250, 'n'), program).empty());
}

TEST_CASE("a Run entry behind one that is too large is still seen") {
    const CScratchFolder folder;
    const std::string program = folder.AddFile("app.exe");
    CScratchRegistry registry;
    const HKEY run = registry.AddText(HKEY_LOCAL_MACHINE, kRun, "a", program);
    SetText(run, "b", program + std::string(300, '-'));
    SetText(run, "c", program);
    SetText(run, "", "");
    CHECK(RowsOf(&CheckRunEntries) ==
          kRunRow + "|\n" + kRunRow + "a|" + program + "\n" + kRunRow + "c|" + program + "\n");
}

TEST_CASE("the Run list of the machine itself is the one that is read") {
    const CScratchFolder folder;
    const std::string program = folder.AddFile("app.exe");
    CAreaKey run(HKEY_LOCAL_MACHINE, kRun);
    run.AddText("VellumorTestRun", program);
    CHECK(RowsOf(&CheckRunEntries).find(kRunRow + "VellumorTestRun|" + program + "\n") != std::string::npos);
}

TEST_CASE("a cached display name of a program that is gone is reported") {
    const CScratchFolder folder;
    const std::string program = folder.AddFile("app.exe");
    CHECK(RowsOfMuiCache(folder.Path() + "\\gone.exe", "Gone") ==
          kMuiRow + folder.Path() + "\\gone.exe|Gone\n");
    CHECK(RowsOfMuiCache(program, "Here").empty());
    CHECK(RowsOfMuiCache(program + " /s", "Here").empty());
    CHECK(RowsOfMuiCache("notepad.exe", "Here").empty());  // found by the system's search
    CHECK(RowsOfMuiCache("", "") == kMuiRow + "|\n");
    CHECK(RowsOfMuiCache("", program) == kMuiRow + "|" + program + "\n");
}

TEST_CASE("cached names that contain an at sign are passed over") {
    for (const char* name : {"@gone.dll,-1", "C:\\gone@x.exe", "gone@"})
        CHECK(RowsOfMuiCache(name, "x").empty());
    CHECK(RowsOfMuiCache("gone", "@") == kMuiRow + "gone|@\n");
}

TEST_CASE("cached names and display names are read into 250 bytes") {
    for (const std::size_t length : {std::size_t{248}, std::size_t{249}}) {
        const std::string text(length, 'n');
        CHECK(RowsOfMuiCache(text, "x") == kMuiRow + text + "|x\n");
        CHECK(RowsOfMuiCache("gone", text) == kMuiRow + "gone|" + text + "\n");
    }
    CHECK(RowsOfMuiCache(std::string(250, 'n'), "x").empty());
    CHECK(RowsOfMuiCache("gone", std::string(250, 'n')).empty());
}
