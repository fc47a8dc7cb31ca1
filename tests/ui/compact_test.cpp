#include <doctest/doctest.h>

#include "tests/support/file_text.h"
#include "tests/ui/hive_shell.h"
#include "ui/dlg_compact.h"

namespace {

using Names = std::vector<std::string>;

constexpr UINT kCompact = 32835;
constexpr UINT kCompactDone = 0x472;
constexpr char kAsk[] =
    "Registry compact will take 3 to 5 minutes and other operations not recommended! Continue?";
constexpr char kDone[] =
    "Registry compact finished. For safety of system and registry, System must be restarted now!";
constexpr char kConflict[] = "System must be restarted firstly because of sharing conflict!";

HWND Dialog() { return CompactDialog().GetSafeHwnd(); }
bool IsShown() { return Dialog() != nullptr && ::IsWindowVisible(Dialog()) != FALSE; }
HWND Summary() { return ::FindWindowA("#32770", "Compact Summary"); }

/// Ends the summary by a button as soon as it is shown, after a look at it.
void EndSummary(
    int button, std::function<void()> look = [] {}) {
    AsSoonAs([] { return Summary() != nullptr; },
             [button, look] {
                 look();
                 ::SendMessageA(Summary(), WM_COMMAND, static_cast<WPARAM>(button), 0);
             });
}

HWND SummaryList() { return ::GetDlgItem(Summary(), 1034); }

}  // namespace

TEST_CASE_FIXTURE(CHiveShell, "a compaction asks first, and without a Yes it does nothing") {
    AddMachines({"VellumorA"});
    WriteFileText(hives.FilePath("VellumorA.bak"), "kept");
    yesOrNo = IDNO;
    Run(kCompact);
    CHECK(actions.messages.size() == 1);
    CheckMessage(0, kAsk, kQuestion);
    CHECK(actions.saves.empty());
    CHECK(FileText(hives.FilePath("VellumorA.bak")) == "kept");
}

TEST_CASE_FIXTURE(CHiveShell, "a compaction shows its summary, then its message, and restarts the system") {
    AddMachines({"VellumorA", "VellumorB"});
    int restartsAtMessage = -1;
    HCURSOR atMessage = nullptr;
    onMessage = [&] {
        restartsAtMessage = actions.restarts;
        atMessage = ::GetCursor();
    };
    int rows = 0;
    EndSummary(IDOK, [&] {
        rows = static_cast<int>(TextsIn(SummaryList(), 0).size());
        CHECK(actions.messages.size() == 1);
        CHECK_FALSE(IsShown());
        CHECK(::IsWindowEnabled(shell.FrameWindow()) == FALSE);
    });
    Run(kCompact);
    CHECK(rows == 2);
    CHECK(actions.messages.size() == 2);
    CheckMessage(0, kAsk, kQuestion);
    CheckMessage(1, kDone, MB_OK | MB_ICONQUESTION);
    CHECK(restartsAtMessage == 0);
    CHECK(atMessage == ::LoadCursorA(nullptr, IDC_ARROW));
    CHECK(actions.restarts == 1);
    CHECK(Dialog() == nullptr);
    CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
}

TEST_CASE_FIXTURE(CHiveShell, "a summary that is closed without OK declines the restart") {
    AddMachines({"VellumorA"});
    EndSummary(IDCANCEL);
    Run(kCompact);
    CHECK(Texts() == Names{kAsk});
    CHECK(actions.restarts == 0);
    CHECK(actions.replacements.size() == 1);
    CHECK(Summary() == nullptr);
    CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
}

TEST_CASE_FIXTURE(CHiveShell, "the summary lists path, sizes and ratio of each compacted hive") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorD)", "");
    WriteFileText(hives.FilePath("VellumorA.bak"), std::string(3000, 'x'));
    WriteFileText(hives.FilePath("VellumorA.pck"), std::string(2000, 'x'));
    WriteFileText(hives.FilePath("VellumorB.bak"), std::string(500, 'x'));
    WriteFileText(hives.FilePath("VellumorB.pck"), std::string(500, 'x'));
    WriteFileText(hives.FilePath("VellumorC.bak"), "no copy");
    std::vector<Names> cells;
    std::vector<Column> columns;
    EndSummary(IDCANCEL, [&] {
        columns = ColumnsOf(SummaryList());
        for (int column = 0; column < 4; ++column) cells.push_back(TextsIn(SummaryList(), column));
        CHECK(WindowText(::GetDlgItem(Summary(), IDOK)) == "OK");
    });
    ::SendMessageA(shell.ListWindow(), kCompactDone, 0, 0);
    CHECK(columns ==
          std::vector<Column>{{"Path", 350}, {"Size before", 90}, {"Size after", 90}, {"Ratio", 60}});
    REQUIRE(cells.size() == 4);
    CHECK(cells[0] == Names{hives.FilePath("VellumorA"), hives.FilePath("VellumorB")});
    CHECK(cells[1] == Names{" 3000", " 500"});
    CHECK(cells[2] == Names{" 2000", " 500"});
    CHECK(cells[3] == Names{" 33.33%", " 0.00%"});
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(CHiveShell, "a former compaction that is in use is told, and nothing is started") {
    AddMachines({"VellumorA"});
    const char* used = "";
    SUBCASE("the file before") { used = "VellumorA.bak"; }
    SUBCASE("a compact file") { used = "VellumorA.tmp"; }
    WriteFileText(hives.FilePath(used), "used");
    const CUniqueFile use(::CreateFileA(hives.FilePath(used).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    Run(kCompact);
    CHECK(actions.messages.size() == 2);
    CheckMessage(1, kConflict, kInformation);
    CHECK(actions.saves.empty());
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_CROSS));
}

TEST_CASE_FIXTURE(CHiveShell, "what a former compaction left and nobody uses goes, and the next one runs") {
    AddMachines({"VellumorA"});
    WriteFileText(hives.FilePath("VellumorA.tmp"), "left");
    WriteFileText(hives.FilePath("VellumorA.bak"), "left");
    EndSummary(IDCANCEL);
    Run(kCompact);
    CHECK(FileText(hives.FilePath("VellumorA.bak")) == "old VellumorA");
}

TEST_CASE_FIXTURE(CHiveShell,
                  "a compaction that stops closes its dialog, reports nothing and restarts nothing") {
    AddMachines({"VellumorA", "VellumorB"});
    SUBCASE("at once") { hives.RemoveList(); }
    SUBCASE("at a hive that cannot be saved") { actions.refusedSave = 2; }
    SUBCASE("at a hive that cannot be replaced, after a while") {
        actions.refusedReplacement = 2;
        actions.beforeReplacement = [] { ::Sleep(300); };
    }
    SUBCASE("at a hive on another volume") {
        hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorA)", R"(\Device\Cdrom0\hive)");
    }
    Run(kCompact);
    CHECK(Texts() == Names{kAsk});
    CHECK(Summary() == nullptr);
    CHECK(Dialog() == nullptr);
    CHECK(actions.restarts == 0);
    CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_CROSS));
}

TEST_CASE_FIXTURE(CHiveShell,
                  "the compaction's dialog shows a busy bar under the wait cursor and stays open") {
    AddMachines({"VellumorA"});
    const CGate gate;
    actions.beforeSave = [&] { gate.Pass(); };
    AsSoonAs(&IsShown, [&] {
        CheckShowsWaitCursor(Dialog());
        CHECK(WindowText(Dialog()).empty());
        CHECK(::FindWindowExA(Dialog(), nullptr, "Static", "Compacting the registry. Please wait...") !=
              nullptr);
        const HWND bar = ::GetDlgItem(Dialog(), 1032);
        CheckBarRange(bar, 400);
        CheckStaysOpen(Dialog());
        const LRESULT before = BarPosition(bar);
        After(1100, [&gate, bar, before] {
            const LRESULT steps = (BarPosition(bar) - before) / 10;
            CHECK(steps >= 3);
            CHECK(steps <= 6);
            gate.Open();
        });
    });
    EndSummary(IDCANCEL);
    Run(kCompact);
}

TEST_CASE_FIXTURE(CHiveShell, "a compaction without hives has an empty summary") {
    int rows = -1;
    EndSummary(IDCANCEL, [&] { rows = static_cast<int>(TextsIn(SummaryList(), 0).size()); });
    Run(kCompact);
    CHECK(rows == 0);
}
