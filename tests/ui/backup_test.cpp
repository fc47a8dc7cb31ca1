#include <doctest/doctest.h>

#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"
#include "tests/ui/hive_shell.h"
#include "ui/dlg_backup.h"

namespace {

using Names = std::vector<std::string>;

constexpr UINT kBackup = 32836;
constexpr UINT kBackupDone = 0x473;
constexpr char kAsk[] = "Registry backup will take 3 to 5 minutes. Continue?";
constexpr char kDone[] = "Registry backup completed successfully.";

HWND Dialog() { return BackupDialog().GetSafeHwnd(); }
HWND HivesBar() { return ::GetDlgItem(Dialog(), 1041); }
HWND BusyBar() { return ::GetDlgItem(Dialog(), 1033); }
bool IsShown() { return Dialog() != nullptr && ::IsWindowVisible(Dialog()) != FALSE; }

/// The only backup that there is.
std::string MadeBackup() {
    Names names = NamesIn(CBackupsFolder::Path());
    std::erase(names, "System");
    REQUIRE(names.size() == 1);
    return CBackupsFolder::Path() + "\\" + names.front();
}

void WINAPI TellNoTime(SYSTEMTIME* time) { *time = SYSTEMTIME{}; }
void WINAPI TellOneTime(SYSTEMTIME* time) { *time = {2009, 5, 4, 14, 16, 3, 27, 0}; }

}  // namespace

TEST_CASE_FIXTURE(CHiveShell, "a backup asks first, and without a Yes it does nothing") {
    AddMachines({"VellumorA"});
    yesOrNo = IDNO;
    Run(kBackup);
    CHECK(actions.messages.size() == 1);
    CheckMessage(0, kAsk, kQuestion);
    CHECK(actions.saves.empty());
    CHECK_FALSE(Exists(CBackupsFolder::Path()));
}

TEST_CASE_FIXTURE(CHiveShell, "a backup saves the hives into a new folder and reports its success") {
    AddMachines({"VellumorA"});
    hives.AddUser("VellumorU");
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", "");
    Run(kBackup);
    CHECK(actions.messages.size() == 2);
    CheckMessage(0, kAsk, kQuestion);
    CheckMessage(1, kDone, kInformation);
    CHECK(NamesIn(MadeBackup()) == Names{"MACHINE.VellumorA.bck", "USER.VellumorU.bck"});
    CHECK(Exists(CBackupsFolder::Path() + "\\System"));
    CHECK(Dialog() == nullptr);
    CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(CHiveShell, "a backup that stops closes its dialog and reports nothing") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    SUBCASE("at once") { hives.RemoveList(); }
    SUBCASE("on a full disk") { actions.refusedSave = 2; }
    SUBCASE("after a while") {
        actions.refusedSave = 2;
        actions.beforeSave = [] { ::Sleep(300); };
    }
    Run(kBackup);
    CHECK(Texts() == Names{kAsk});
    CHECK(Dialog() == nullptr);
    CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_CROSS));
}

TEST_CASE_FIXTURE(CHiveShell,
                  "the cursor waits during a backup and is an arrow when it has come to its end") {
    AddMachines({"VellumorA"});
    const CGate gate;
    actions.beforeSave = [&] { gate.Pass(); };
    HCURSOR atEnd = nullptr;
    onMessage = [&] { atEnd = ::GetCursor(); };
    AsSoonAs(&IsShown, [&] {
        CheckShowsWaitCursor(Dialog());
        gate.Open();
    });
    Run(kBackup);
    CHECK(atEnd == ::LoadCursorA(nullptr, IDC_ARROW));
}

TEST_CASE_FIXTURE(CHiveShell, "the upper bar counts the hives that are saved, and the other one is busy") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorAA)", "");
    const CGate gate;
    actions.beforeSave = [&] { gate.Pass(); };
    AsSoonAs(&IsShown, [&] {
        CHECK(WindowText(Dialog()).empty());
        CHECK(::FindWindowExA(Dialog(), nullptr, "Static", "Please wait the backup process to complete...") !=
              nullptr);
        CheckBarRange(HivesBar(), 440);
        CheckBarRange(BusyBar(), 400);
        CHECK(BarPosition(HivesBar()) == 0);
        gate.Open();
    });
    AsSoonAs([] { return IsShown() && BarPosition(HivesBar()) == 40; },
             [&] {
                 const LRESULT before = BarPosition(BusyBar());
                 After(1000, [&, before] {
                     const LRESULT steps = (BarPosition(BusyBar()) - before) / 10;
                     CHECK(steps >= 7);
                     CHECK(steps <= 11);
                     CHECK(BarPosition(HivesBar()) == 40);
                     gate.Open();
                 });
             });
    LRESULT atEnd = 0;
    onMessage = [&] { atEnd = Dialog() != nullptr ? BarPosition(HivesBar()) : 80; };
    Run(kBackup);
    CHECK(atEnd == 80);
    CHECK(actions.saves.size() == 2);
}

TEST_CASE_FIXTURE(CHiveShell, "the backup dialog cannot be closed while the worker runs") {
    AddMachines({"VellumorA"});
    const CGate gate;
    actions.beforeSave = [&] { gate.Pass(); };
    AsSoonAs(&IsShown, [&] {
        CheckStaysOpen(Dialog());
        CHECK(::GetMenu(shell.FrameWindow()) != nullptr);
        shell.Command(kBackup);  // a second one does not start
        CHECK(actions.messages.size() == 1);
        gate.Open();
    });
    Run(kBackup);
    CHECK(Texts() == Names{kAsk, kDone});
}

TEST_CASE_FIXTURE(CHiveShell, "the end of one backup does not end the dialog of the next") {
    AddMachines({"VellumorA"});
    Run(kBackup);
    const CGate gate;
    actions.beforeSave = [&] { gate.Pass(); };
    bool stays = false;
    AsSoonAs(&IsShown, [&] {
        After(500, [&] {
            stays = IsShown();
            gate.Open();
        });
    });
    Run(kBackup);
    CHECK(stays);
}

TEST_CASE_FIXTURE(CHiveShell, "a backup that cannot name its folder says so and goes on") {
    AddMachines({"VellumorA"});
    const CCallHook hook("GetLocalTime", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&TellNoTime)));
    actions.refusedSave = 1;  // nothing is to be written there
    Run(kBackup);
    CheckMessage(1, "Can not create registry backup file.", kInformation);
    CHECK(actions.messages.size() == 2);
    CHECK(actions.saves == Names{"\\MACHINE.VellumorA.bck"});
}

TEST_CASE_FIXTURE(CHiveShell, "a second backup in the same second reports nothing and keeps the first") {
    AddMachines({"VellumorA", "VellumorB"});
    const CCallHook hook("GetLocalTime", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&TellOneTime)));
    Run(kBackup);
    const std::string first = FileText(MadeBackup() + "\\MACHINE.VellumorA.bck");
    SetText(hives.Key("VellumorA"), "marker", "changed since");
    Run(kBackup);
    CHECK(Texts() == Names{kAsk, kDone, kAsk});
    CHECK(FileText(MadeBackup() + "\\MACHINE.VellumorA.bck") == first);
}

TEST_CASE_FIXTURE(CHiveShell, "the done message alone shows the success") {
    ::SendMessageA(shell.ListWindow(), kBackupDone, 0, 0);
    CHECK(actions.messages.size() == 1);
    CheckMessage(0, kDone, kInformation);
}

TEST_CASE_FIXTURE(CHiveShell, "a finished dialog has a full bar, wherever it stood") {
    CDlgBackup dialog;
    for (const int ticks : {0, 7, 39, 40, 41, 60}) {
        CAPTURE(ticks);
        LRESULT end = 0;
        After(20, [&] {
            const HWND bar = dialog.GetDlgItem(1033);
            ::SendMessageA(bar, PBM_SETPOS, 0, 0);
            for (int tick = 0; tick < ticks; ++tick) ::SendMessageA(bar, PBM_STEPIT, 0, 0);
            dialog.Finish();
            end = BarPosition(bar);
        });
        CHECK(dialog.DoModal(shell.FrameWindow()) == IDOK);
        CHECK(end == 400);
    }
}

TEST_CASE_FIXTURE(CHiveShell, "the worker's last word ends the dialog at the next tick") {
    CDlgBackup dialog;
    dialog.Prepare();
    After(250, [&] { dialog.SetDone(); });
    CHECK(dialog.DoModal(shell.FrameWindow()) == IDOK);
    dialog.Prepare();
    After(250, [&] { dialog.SetGivenUp(); });
    CHECK(dialog.DoModal(shell.FrameWindow()) == IDCANCEL);
    dialog.Prepare();
    dialog.SetDone();  // before the dialog is open
    CHECK(dialog.DoModal(shell.FrameWindow()) == IDOK);
}

TEST_CASE_FIXTURE(CHiveShell, "hives are counted only while the dialog is open") {
    CDlgBackup dialog;
    dialog.StepHives();
    LRESULT position = -1;
    After(20, [&] {
        for (int hive = 0; hive < 11; ++hive) dialog.StepHives();
        position = BarPosition(dialog.GetDlgItem(1041));
        dialog.Finish();
    });
    (void)dialog.DoModal(shell.FrameWindow());
    dialog.StepHives();
    CHECK(position == 440);
}

TEST_CASE_FIXTURE(CHiveShell, "a backup leaves no handle open") {
    AddMachines({"VellumorA"});
    actions.refusedSave = 1;
    Run(kBackup);
    const std::size_t before = OwnHandles().size();
    actions.saves.clear();
    Run(kBackup);
    CHECK(OwnHandles().size() == before);
}
