#include <doctest/doctest.h>

#include "platform/program_folder.h"
#include "tests/ui/shell.h"
#include "tests/ui/undo_bench.h"

namespace {

constexpr int kDelete = UndoBench::kDelete;

struct UndoListBench : UndoBench {
    void AddFiles(int count) const {
        for (int day = 1; day <= count; ++day)
            undo.AddFile("2009.05." + std::to_string(day + 10) + ".16.03.27.reg");
    }
};

const std::string kInformation = "Vellumor v4.55";

}  // namespace

TEST_CASE("the Undo dialog shows the undo files with their dates") {
    UndoListBench bench;
    bench.undo.AddFile("2009.05.14.16.03.27.reg");
    bench.undo.AddFile("2010.12.31.00.00.00.reg");
    bench.undo.AddFile("2010.12.31.00.00.00.txt");
    bench.Show([&] {
        CHECK(WindowText(bench.Control(IDOK)) == "Undo");
        CHECK(WindowText(bench.Control(kDelete)) == "Delete");
        CHECK(WindowText(bench.Control(IDCANCEL)) == "Cancel");
        CHECK(LOWORD(::SendMessageA(bench.Dialog(), DM_GETDEFID, 0, 0)) == IDOK);
        CHECK(bench.Heading(0) == "Registry Undo File");
        CHECK(bench.Heading(1) == "Year/Month/Day/Hour:Minute:Second");
        CHECK(::SendMessageA(bench.List(), LVM_GETCOLUMNWIDTH, 0, 0) == 180);
        CHECK(::SendMessageA(bench.List(), LVM_GETCOLUMNWIDTH, 1, 0) == 215);
        CHECK(::SendMessageA(bench.List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) ==
              (LVS_EX_GRIDLINES | LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT));
        CHECK((::GetWindowLongA(bench.List(), GWL_STYLE) & LVS_TYPEMASK) == LVS_REPORT);
        REQUIRE(bench.Rows() == 2);
        CHECK(bench.Cell(0, 0) == "2009.05.14.16.03.27.reg");
        CHECK(bench.Cell(0, 1) == "2009/05/14/16:03:27");
        CHECK(bench.Cell(1, 1) == "2010/12/31/00:00:00");
        CHECK(bench.IsEnabled(IDOK));
        CHECK(bench.IsEnabled(kDelete));
    });
    CHECK(bench.actions.messages.empty());
}

TEST_CASE("a name without a date ends the filling") {
    UndoListBench bench;
    bench.undo.AddFile("2009.05.14.16.03.27.reg");
    bench.undo.AddFile("aname.reg");
    bench.undo.AddFile("zz.2009.reg");
    bench.Show([&] {
        REQUIRE(bench.Rows() == 2);
        CHECK(bench.Cell(1, 0) == "aname.reg");
        CHECK(bench.Cell(1, 1).empty());
    });
}

TEST_CASE("without undo files there is nothing to undo or delete") {
    for (const bool hasFolder : {true, false}) {
        UndoListBench bench;
        if (!hasFolder) ::RemoveDirectoryA(bench.undo.Path().c_str());
        bench.Show([&] {
            CHECK(bench.Rows() == 0);
            CHECK_FALSE(bench.IsEnabled(IDOK));
            CHECK_FALSE(bench.IsEnabled(kDelete));
            CHECK(bench.IsEnabled(IDCANCEL));
        });
    }
}

TEST_CASE("ten undo files are no reason to warn, eleven are, once and at the start") {
    {
        UndoListBench bench;
        bench.AddFiles(10);
        bench.Show([&] { CHECK(bench.Rows() == 10); });
        CHECK(bench.actions.messages.empty());
    }
    UndoListBench bench;
    bench.AddFiles(11);
    bench.Show([&] {
        CHECK(bench.Rows() == 11);
        CHECK(bench.actions.messages.size() == 1);
    });
    bench.CheckOnlyMessage(
        "Too many registry undo files will take up more hard disk space. Undo file deleting "
        "recommended.",
        MB_OK | MB_ICONINFORMATION);
}

TEST_CASE("Undo without a checked file asks for one, and the dialog stays") {
    UndoListBench bench;
    bench.AddFiles(2);
    bench.Show([&] {
        bench.Press(IDOK);
        CHECK(bench.Dialog() != nullptr);
    });
    bench.CheckOnlyMessage("Select one undo file to recover.", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.actions.asked.empty());
}

TEST_CASE("Undo with two checked files is refused, and replays nothing") {
    UndoListBench bench;
    bench.AddFiles(3);
    bench.Show([&] {
        bench.Check({0, 2});
        bench.Press(IDOK);
        CHECK(bench.Dialog() != nullptr);
    });
    bench.CheckOnlyMessage("Can not undo repair made on different time once.", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.actions.asked.empty());
}

TEST_CASE("Undo answered by No keeps the dialog open and replays nothing") {
    UndoListBench bench;
    bench.AddFiles(1);
    bench.reply = IDNO;
    bench.Show([&] {
        bench.Check({0});
        bench.Press(IDOK);
        CHECK(bench.Dialog() != nullptr);
    });
    bench.CheckOnlyMessage("Undo the selected registry repair on 2009/05/11/16:03:27?",
                           MB_YESNO | MB_ICONQUESTION);
    CHECK(bench.actions.asked.empty());
}

TEST_CASE("Undo answered by Yes runs the registry editor, hidden and silent, and keeps the file") {
    UndoListBench bench;
    bench.AddFiles(2);
    bench.reply = IDYES;
    bench.Show([&] {
        bench.Check({1});
        bench.Press(IDOK);
    });
    REQUIRE(bench.actions.asked.size() == 1);
    CHECK(bench.actions.asked[0] == "run \"C:\\windows\\regedit.exe\" /s \"" + ProgramFolder() +
                                        "\\Undo\\2009.05.12.16.03.27.reg\" " + std::to_string(SW_HIDE));
    REQUIRE(bench.actions.messages.size() == 2);
    CHECK(bench.actions.messages[1].text == "Repair made on 2009/05/12/16:03:27 recovered successfully.");
    CHECK(bench.actions.messages[1].flags == (MB_OK | MB_ICONINFORMATION));
    CHECK(bench.actions.messages[1].caption == kInformation);
    CHECK(bench.undo.HasFile("2009.05.12.16.03.27.reg"));
}

TEST_CASE("an editor that does not start is passed over in silence") {
    for (const UINT answer : {0u, 2u, 31u}) {
        UndoListBench bench;
        bench.AddFiles(1);
        bench.reply = IDYES;
        bench.actions.runAnswer = answer;
        bench.Show([&] {
            bench.Check({0});
            bench.Press(IDOK);
        });
        CHECK(bench.actions.asked.size() == 1);
        CHECK(bench.actions.messages.size() == 1);
    }
}

TEST_CASE("without a registry editor in the Windows folder nothing is started") {
    UndoListBench bench;
    bench.AddFiles(1);
    bench.reply = IDYES;
    REQUIRE(::MoveFileA("C:\\windows\\regedit.exe", "C:\\windows\\regedit.away") != FALSE);
    bench.Show([&] {
        bench.Check({0});
        bench.Press(IDOK);
    });
    CHECK(::MoveFileA("C:\\windows\\regedit.away", "C:\\windows\\regedit.exe") != FALSE);
    CHECK(bench.actions.asked.empty());
    CHECK(bench.actions.messages.size() == 1);  // the question
}

TEST_CASE("cancelling the Undo dialog replays nothing") {
    UndoListBench bench;
    bench.AddFiles(1);
    bench.Show([&] { bench.Check({0}); });  // Show presses Cancel at its end
    CHECK(bench.actions.asked.empty());
    CHECK(bench.actions.messages.empty());
}

TEST_CASE("Delete without a checked file asks for one") {
    UndoListBench bench;
    bench.AddFiles(1);
    bench.Show([&] { bench.Press(kDelete); });
    bench.CheckOnlyMessage("Select at least one undo file to delete.", MB_OK | MB_ICONINFORMATION);
    CHECK(bench.undo.Files().size() == 1);
}

TEST_CASE("Delete of one file asks, deletes it, and reports it") {
    UndoListBench bench;
    bench.AddFiles(3);
    bench.reply = IDYES;
    bench.Show([&] {
        bench.Check({1});
        bench.Press(kDelete);
        CHECK(bench.Rows() == 2);
        CHECK(bench.Cell(1, 0) == "2009.05.13.16.03.27.reg");
    });
    REQUIRE(bench.actions.messages.size() == 2);
    CHECK(bench.actions.messages[0].text == "Delete the registry undo file: 2009.05.12.16.03.27.reg ?");
    CHECK(bench.actions.messages[0].flags == (MB_YESNO | MB_ICONQUESTION));
    CHECK(bench.actions.messages[1].text ==
          "Registry undo file: 2009.05.12.16.03.27.reg deleted successfully.");
    CHECK(bench.actions.messages[1].flags == (MB_OK | MB_ICONINFORMATION));
    CHECK(bench.undo.Files() ==
          std::vector<std::string>{"2009.05.11.16.03.27.reg", "2009.05.13.16.03.27.reg"});
}

TEST_CASE("Delete of several files asks for their number, deletes them, and reports it") {
    UndoListBench bench;
    bench.AddFiles(4);
    bench.reply = IDYES;
    bench.Show([&] {
        bench.Check({0, 1, 3});
        bench.Press(kDelete);
        REQUIRE(bench.Rows() == 1);
        CHECK(bench.Cell(0, 0) == "2009.05.13.16.03.27.reg");
    });
    REQUIRE(bench.actions.messages.size() == 2);
    CHECK(bench.actions.messages[0].text == "Delete the selected 3 registry undo files?");
    CHECK(bench.actions.messages[0].flags == (MB_YESNO | MB_ICONQUESTION));
    CHECK(bench.actions.messages[1].text == "The selected 3 registry undo files deleted successfully.");
    CHECK(bench.undo.Files() == std::vector<std::string>{"2009.05.13.16.03.27.reg"});
}

TEST_CASE("Delete answered by No deletes nothing") {
    for (const bool several : {false, true}) {
        UndoListBench bench;
        bench.AddFiles(2);
        bench.reply = IDNO;
        bench.Show([&] {
            bench.Check(several ? std::vector<int>{0, 1} : std::vector<int>{0});
            bench.Press(kDelete);
            CHECK(bench.Rows() == 2);
        });
        CHECK(bench.actions.messages.size() == 1);
        CHECK(bench.undo.Files().size() == 2);
    }
}

TEST_CASE("a file that cannot be deleted keeps its row; among several all are counted") {
    for (const bool several : {false, true}) {
        UndoListBench bench;
        bench.AddFiles(2);
        bench.reply = IDYES;
        const HANDLE lock = ::CreateFileA((bench.undo.Path() + "\\2009.05.11.16.03.27.reg").c_str(),
                                          GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        REQUIRE(lock != INVALID_HANDLE_VALUE);
        bench.Show([&] {
            bench.Check(several ? std::vector<int>{0, 1} : std::vector<int>{0});
            bench.Press(kDelete);
            CHECK(bench.Rows() == (several ? 1 : 2));
            CHECK(bench.Cell(0, 0) == "2009.05.11.16.03.27.reg");
        });
        ::CloseHandle(lock);
        CHECK(bench.actions.messages.size() == (several ? 2 : 1));
        if (several)
            CHECK(bench.actions.messages[1].text ==
                  "The selected 2 registry undo files deleted successfully.");
    }
}

TEST_CASE("once the last file is deleted there is nothing to press but Cancel") {
    UndoListBench bench;
    bench.AddFiles(1);
    bench.reply = IDYES;
    bench.Show([&] {
        bench.Check({0});
        bench.Press(kDelete);
        CHECK_FALSE(bench.IsEnabled(IDOK));
        CHECK_FALSE(bench.IsEnabled(kDelete));
    });
}
