#include <doctest/doctest.h>

#include "tests/console/console_bench.h"
#include "tests/support/program_files.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr char kFile[] = "2009.05.14.16.03.27.reg";

struct UndoBench : CConsoleBench {
    UndoBench() {
        undo.Make();
        undo.AddFile(kFile);
        undo.AddFile("2010.12.31.00.00.00.reg");
    }
    CProgramSubfolder undo{"Undo"};
};

}  // namespace

TEST_CASE_FIXTURE(UndoBench, "undo files are listed with their dates") {
    undo.AddFile("aname.reg");
    undo.AddFile("2009.05.14.16.03.27.txt");
    CHECK((Run({"undo", "list"}) == ExitCode::Done));
    CHECK(terminal.output ==
          "2009.05.14.16.03.27.reg  2009/05/14/16:03:27\n"
          "2010.12.31.00.00.00.reg  2010/12/31/00:00:00\n"
          "aname.reg\n");
    terminal.refusesOutput = true;
    CHECK((Run({"undo", "list"}) == ExitCode::Failed));
    CHECK(terminal.error == "Standard output cannot be written.\n");
}

TEST_CASE_FIXTURE(UndoBench, "what standard output refuses is told on standard error") {
    terminal.refusesOutput = true;
    CHECK((Run({"undo", "replay", kFile}) == ExitCode::Failed));
    CHECK(terminal.error == std::string("Standard output cannot be written: replayed: ") + kFile + "\n");
    CHECK((Run({"undo", "delete", kFile}) == ExitCode::Failed));
    CHECK(terminal.error == std::string("Standard output cannot be written: deleted: ") + kFile + "\n");
    CHECK(undo.Files().size() == 1);
}

TEST_CASE("without undo files the list is empty") {
    CConsoleBench bench;
    const CProgramSubfolder undo("Undo");
    CHECK((bench.Run({"undo", "list"}) == ExitCode::Done));
    CHECK(bench.terminal.output.empty());
}

TEST_CASE_FIXTURE(UndoBench, "a replay ends when the editor that it started has ended") {
    const DWORD own = ::GetCurrentProcessId();
    actions.programs = {{"regedit.exe", 7, own}, {"other.exe", 8, own}};
    int lists = 0;
    actions.onList = [&] {
        // The first list is taken before the start; the editor is there for two more.
        ++lists;
        actions.programs.resize(2);
        if (lists == 2 || lists == 3) actions.programs.push_back({"REGEDIT.EXE", 9, own});
    };
    CHECK((Run({"undo", "replay", kFile}) == ExitCode::Done));
    CHECK(lists == 4);
    CHECK(terminal.output == std::string("replayed: ") + kFile + "\n");
    std::string started;
    for (const std::string& asked : actions.asked)
        if (asked.starts_with("run ")) started += asked;
    CHECK(started.find("regedit.exe") != std::string::npos);
    CHECK(started.find("/s \"" + undo.Path() + "\\" + kFile + "\"") != std::string::npos);
}

TEST_CASE_FIXTURE(UndoBench, "an editor that somebody else starts meanwhile is not waited for") {
    int lists = 0;
    actions.onList = [&] {
        // For ever there, unless it is looked for so often that the test has failed.
        if (++lists == 2) actions.programs.push_back({"regedit.exe", 9, ::GetCurrentProcessId() + 4});
        if (lists == 5) actions.programs.clear();
    };
    CHECK((Run({"undo", "replay", kFile}) == ExitCode::Done));
    CHECK(lists == 2);
}

TEST_CASE_FIXTURE(UndoBench, "a replay that does not start is a failure") {
    actions.runAnswer = 2;
    CHECK((Run({"undo", "replay", kFile}) == ExitCode::Failed));
    CHECK(terminal.output.empty());
    CHECK(terminal.error == std::string("The undo file ") + kFile + " was not replayed.\n");
}

TEST_CASE_FIXTURE(UndoBench, "a file that holds more than its companion lists is not replayed") {
    undo.AddFile("2009.05.14.16.03.27.branches", "HKEY_CURRENT_USER\\a\r\n");
    CHECK((Run({"undo", "replay", kFile}) == ExitCode::Failed));
    CHECK(terminal.error == std::string("The undo file ") + kFile + " was not replayed.\n");
    for (const std::string& asked : actions.asked) CHECK_FALSE(asked.starts_with("run "));
}

TEST_CASE_FIXTURE(UndoBench, "a name that no undo file has leads nowhere") {
    const CScratchFolder folder;
    const std::string outside = folder.AddFile("outside.reg");
    for (const std::string& name :
         {std::string("none.reg"), std::string("..\\vellumor.exe"), outside,
          "..\\Undo\\" + std::string(kFile), std::string("*.reg"), std::string(".")}) {
        CAPTURE(name);
        CHECK((Run({"undo", "replay", name}) == ExitCode::Failed));
        CHECK(terminal.error == "There is no undo file named " + name + ".\n");
        CHECK((Run({"undo", "delete", name}) == ExitCode::Failed));
        CHECK(terminal.error == "There is no undo file named " + name + ".\n");
    }
    CHECK(actions.asked.empty());
    CHECK(Exists(outside));
    CHECK(undo.Files().size() == 2);
}

TEST_CASE_FIXTURE(UndoBench, "the named files are deleted, in any letter case, and no other") {
    undo.AddFile("kept.reg");
    CHECK((Run({"undo", "delete", kFile, "none.reg", "2010.12.31.00.00.00.REG"}) == ExitCode::Failed));
    CHECK(terminal.output == std::string("deleted: ") + kFile + "\ndeleted: 2010.12.31.00.00.00.REG\n");
    CHECK(terminal.error == "There is no undo file named none.reg.\n");
    CHECK(undo.Files() == std::vector<std::string>{"kept.reg"});
    CHECK((Run({"undo", "delete", "kept.reg"}) == ExitCode::Done));
    CHECK(undo.Files().empty());
}
