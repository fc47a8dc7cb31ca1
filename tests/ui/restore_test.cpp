#include <doctest/doctest.h>

#include <algorithm>

#include "tests/support/file_text.h"
#include "tests/ui/hive_shell.h"

namespace {

using Names = std::vector<std::string>;

constexpr UINT kRestore = 32837;
constexpr int kDelete = 1029;
constexpr char kTooMany[] =
    "Too many registry backup files will take up more hard disk space. Backup file deleting recommended.";
constexpr char kConflict[] = "System must be restarted firstly because of sharing conflict!";

HWND Dialog() { return ::FindWindowA("#32770", "Restore backup"); }
HWND Button(int id) { return ::GetDlgItem(Dialog(), id); }
bool IsEnabled(int id) { return ::IsWindowEnabled(Button(id)) != FALSE; }
void Press(int id) { ::SendMessageA(Dialog(), WM_COMMAND, static_cast<WPARAM>(id), 0); }

HWND List() { return ::GetDlgItem(Dialog(), 1027); }
Names ListedNames() { return TextsIn(List(), 0); }
Names ListedDates() { return TextsIn(List(), 1); }

/// Checks exactly these backups.
void Choose(std::initializer_list<const char*> names) {
    CDialogList list(List());
    for (int row = 0; row < list.GetItemCount(); ++row)
        list.SetCheck(row, std::ranges::find(names, list.GetItemText(row, 0)) != names.end());
}

constexpr char kFirst[] = "2009.05.14.16.03.27";
constexpr char kSecond[] = "2010.01.02.03.04.05";

struct Fixture : CHiveShell {
    Fixture() {
        CBackupsFolder::AddFolder(kFirst);
        CBackupsFolder::AddFolder(kSecond);
    }

    /// Opens the dialog, acts on it, and closes it where that has not done so.
    void WithDialog(std::function<void()> act) {
        AsSoonAs([] { return Dialog() != nullptr && ::IsWindowVisible(Dialog()) != FALSE; },
                 [act = std::move(act)] {
                     act();
                     Press(IDCANCEL);
                 });
        Run(kRestore);
        CHECK(Dialog() == nullptr);
    }
    /// Checks these backups and presses a button.
    void PressWithChecked(std::initializer_list<const char*> names, int button) {
        WithDialog([names, button] {
            Choose(names);
            Press(button);
        });
    }
    /// A message of the dialog.
    void CheckDialogMessage(std::size_t index, const std::string& text, UINT flags) const {
        REQUIRE(index < actions.messages.size());
        const CRecordingActions::Message& message = actions.messages[index];
        CHECK(message.text == text);
        CHECK(message.caption == "Vellumor v4.55");
        CHECK(message.flags == flags);
        CHECK(message.owner != shell.ListWindow());
    }
    static void AddBackupOf(const std::string& hive) {
        CBackupsFolder::AddFile(std::string(kFirst) + "\\MACHINE." + hive + ".bck", "new " + hive);
    }
    static bool BackupExists(const char* name) { return Exists(CBackupsFolder::Path() + "\\" + name); }
};

const std::string kRestored =
    "Backup made on 2009/05/14/16:03:27 restored successfully. For safety of system and registry, system "
    "must "
    "be restarted now!";

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the dialog lists each backup with its date") {
    WithDialog([] {
        CHECK(ListedNames() == Names{kFirst, kSecond});
        CHECK(ListedDates() == Names{"2009/05/14/16:03:27", "2010/01/02/03:04:05"});
        CHECK_FALSE(CDialogList(List()).GetCheck(0));
        CHECK(WindowText(Button(IDOK)) == "Restore");
        CHECK(WindowText(Button(kDelete)) == "Delete");
        CHECK(WindowText(Button(IDCANCEL)) == "Cancel");
        CHECK(LOWORD(::SendMessageA(Dialog(), DM_GETDEFID, 0, 0)) == IDOK);
        CHECK(IsEnabled(IDOK));
        CHECK(IsEnabled(kDelete));
    });
    CHECK(actions.messages.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "the list has check boxes, grid lines, whole-row selection and two columns") {
    WithDialog([] {
        const HWND list = List();
        const auto style = static_cast<DWORD>(::SendMessageA(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
        CHECK(style == (LVS_EX_CHECKBOXES | LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT));
        CHECK(ColumnsOf(list) == std::vector<Column>{{"Registry Backup Files", 180},
                                                     {"Year/Month/Day/Hour:Minute:Second", 215}});
    });
}

TEST_CASE_FIXTURE(CHiveShell, "a name that is no date is listed all the same") {
    for (const char* name : {"System", "a.b.c.d.e.f.g.h", "plain", "x.y"}) CBackupsFolder::AddFolder(name);
    CBackupsFolder::AddFolder(".hidden");
    CBackupsFolder::AddFile("file", "");
    std::vector<std::pair<std::string, std::string>> rows;
    AsSoonAs([] { return Dialog() != nullptr; },
             [&] {
                 const Names names = ListedNames();
                 const Names dates = ListedDates();
                 for (std::size_t row = 0; row < names.size(); ++row)
                     rows.emplace_back(names[row], dates[row]);
                 Press(IDCANCEL);
             });
    Run(kRestore);
    std::ranges::sort(rows);
    CHECK(rows == std::vector<std::pair<std::string, std::string>>{{"System", "System"},
                                                                   {"a.b.c.d.e.f.g.h", "a/b/c/d:e:f.g.h"},
                                                                   {"plain", "plain"},
                                                                   {"x.y", "x/y"}});
}

TEST_CASE_FIXTURE(CHiveShell, "without a backup nothing can be restored or deleted") {
    SUBCASE("the folder of backups is missing") {}
    SUBCASE("it is empty") { ::CreateDirectoryA(CBackupsFolder::Path().c_str(), nullptr); }
    SUBCASE("it holds files alone") { CBackupsFolder::AddFile("file", ""); }
    bool looked = false;
    AsSoonAs([] { return Dialog() != nullptr; },
             [&] {
                 looked = true;
                 CHECK(ListedNames().empty());
                 CHECK_FALSE(IsEnabled(IDOK));
                 CHECK_FALSE(IsEnabled(kDelete));
                 CHECK(IsEnabled(IDCANCEL));
                 Press(IDCANCEL);
             });
    Run(kRestore);
    CHECK(looked);
    CHECK(actions.messages.empty());
}

TEST_CASE_FIXTURE(Fixture, "three entries give no warning, four give it, whatever they are") {
    CBackupsFolder::AddFolder("System");
    WithDialog([] { CHECK(ListedNames().size() == 3); });
    CHECK(actions.messages.empty());
    CBackupsFolder::AddFolder("2011.01.02.03.04.05");
    WithDialog([] { CHECK(ListedNames().size() == 4); });
    CHECK(actions.messages.size() == 1);
    CheckDialogMessage(0, kTooMany, kInformation);
}

TEST_CASE_FIXTURE(Fixture, "Restore wants exactly one checked backup") {
    AddMachines({"VellumorA"});
    AddBackupOf("VellumorA");
    WithDialog([this] {
        Press(IDOK);
        CHECK(Dialog() != nullptr);
        Choose({kFirst, kSecond});
        Press(IDOK);
        CHECK(Dialog() != nullptr);
        CHECK(actions.messages.size() == 2);
    });
    CheckDialogMessage(0, "Select one backup file to restore.", kInformation);
    CheckDialogMessage(1, "Can not restore backup made on different time once.", kInformation);
    CHECK(actions.replacements.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "Restore asks, and without a Yes the dialog stays open") {
    AddMachines({"VellumorA"});
    AddBackupOf("VellumorA");
    yesOrNo = IDNO;
    WithDialog([] {
        Choose({kFirst});
        Press(IDOK);
        CHECK(::IsWindowVisible(Dialog()) != FALSE);
    });
    CHECK(actions.messages.size() == 1);
    CheckDialogMessage(0, "Restore the registry backup on 2009/05/14/16:03:27?", kQuestion);
    CHECK(actions.replacements.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "a backup that is restored is reported, and then the system is restarted") {
    AddMachines({"VellumorA", "VellumorB"});
    AddBackupOf("VellumorA");
    AddBackupOf("VellumorB");
    int restartsAtMessage = -1;
    HCURSOR atMessage = nullptr;
    HCURSOR during = nullptr;
    actions.beforeReplacement = [&] { during = ::GetCursor(); };
    onMessage = [&] {
        restartsAtMessage = actions.restarts;
        atMessage = ::GetCursor();
    };
    PressWithChecked({kFirst}, IDOK);
    CHECK(actions.messages.size() == 2);
    CheckMessage(1, kRestored, kInformation);
    CHECK(restartsAtMessage == 0);
    CHECK(actions.restarts == 1);
    CHECK(during == ::LoadCursorA(nullptr, IDC_WAIT));
    CHECK(atMessage == ::LoadCursorA(nullptr, IDC_ARROW));
    CHECK(FileText(hives.FilePath("VellumorA")) == "new VellumorA");
    CHECK(NamesIn(CBackupsFolder::Path() + "\\" + kFirst) ==
          Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck"});
    CHECK(NamesIn(CBackupsFolder::Path() + "\\System") ==
          Names{"MACHINE.VellumorA.sys", "MACHINE.VellumorB.sys"});
}

TEST_CASE_FIXTURE(Fixture,
                  "a backup without files restores nothing, and the system is restarted all the same") {
    PressWithChecked({kFirst}, IDOK);
    CheckMessage(1, kRestored, kInformation);
    CHECK(actions.replacements.empty());
    CHECK(actions.restarts == 1);
}

TEST_CASE_FIXTURE(Fixture, "the folder of replaced hives can be chosen like any other") {
    CBackupsFolder::AddFolder("System");
    PressWithChecked({"System"}, IDOK);
    CheckDialogMessage(0, "Restore the registry backup on System?", kQuestion);
    CheckMessage(
        1,
        "Backup made on System restored successfully. For safety of system and registry, system must be "
        "restarted now!",
        kInformation);
    CHECK(actions.restarts == 1);
}

TEST_CASE_FIXTURE(Fixture, "a restore that ends early says why, and restarts nothing") {
    AddMachines({"VellumorA", "VellumorB"});
    AddBackupOf("VellumorA");
    AddBackupOf("VellumorB");
    std::string expected = kConflict;
    CUniqueFile use;
    actions.refusedReplacement = 2;
    SUBCASE("the system refuses a hive: it has to be restarted first") {}
    SUBCASE("a replaced file is in use: the same") {
        CBackupsFolder::AddFolder("System");
        const std::string old = CBackupsFolder::AddFile("System\\MACHINE.VellumorB.sys", "in use");
        use.Reset(::CreateFileA(old.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    SUBCASE("any other failure") {
        actions.replaceAnswer = ERROR_BADDB;
        expected = "Can not restore registry, please restart system and try again!";
    }
    PressWithChecked({kFirst}, IDOK);
    CHECK(actions.messages.size() == 2);
    CheckMessage(1, expected, kInformation);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new VellumorA");
    CHECK(FileText(hives.FilePath("VellumorB")) == "old VellumorB");
    CHECK(actions.restarts == 0);
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_CROSS));
}

TEST_CASE_FIXTURE(Fixture, "a restore that meets a hive that is not loaded ends without a word") {
    AddMachines({"VellumorA"});
    AddBackupOf("VellumorA");
    AddBackupOf("VellumorB");
    PressWithChecked({kFirst}, IDOK);
    CHECK(Texts() == Names{"Restore the registry backup on 2009/05/14/16:03:27?"});
    CHECK(actions.replacements.size() == 1);
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "Delete wants a checked backup") {
    PressWithChecked({}, kDelete);
    CHECK(actions.messages.size() == 1);
    CheckDialogMessage(0, "Select at least one back file to delete.", kInformation);
    CHECK(BackupExists(kFirst));
}

TEST_CASE_FIXTURE(Fixture, "Delete asks about one backup, deletes it with its files, and says so") {
    AddBackupOf("VellumorA");
    Names rows;
    WithDialog([&] {
        Choose({kFirst});
        yesOrNo = IDNO;
        Press(kDelete);
        CHECK(BackupExists(kFirst));
        yesOrNo = IDYES;
        Press(kDelete);
        rows = ListedNames();
        CHECK(IsEnabled(IDOK));
    });
    CHECK(rows == Names{kSecond});
    CHECK_FALSE(BackupExists(kFirst));
    CHECK(BackupExists(kSecond));
    CHECK(actions.messages.size() == 3);
    const std::string ask = std::string("Delete the registry backup file: ") + kFirst + " ?";
    CheckDialogMessage(0, ask, kQuestion);
    CheckDialogMessage(1, ask, kQuestion);
    CheckDialogMessage(2, std::string("Registry backup file: ") + kFirst + " deleted successfully.",
                       kInformation);
}

TEST_CASE_FIXTURE(Fixture, "Delete asks about several backups once, and nothing is left to choose") {
    WithDialog([&] {
        Choose({kFirst, kSecond});
        Press(kDelete);
        CHECK(ListedNames().empty());
        CHECK_FALSE(IsEnabled(IDOK));
        CHECK_FALSE(IsEnabled(kDelete));
    });
    CHECK_FALSE(BackupExists(kFirst));
    CHECK_FALSE(BackupExists(kSecond));
    CHECK(actions.messages.size() == 2);
    CheckDialogMessage(0, "Delete the selected 2 registry backup files?", kQuestion);
    CheckDialogMessage(1, "The selected 2 registry backup files deleted successfully.", kInformation);
}

TEST_CASE_FIXTURE(Fixture, "a backup that cannot be deleted keeps its row") {
    AddBackupOf("VellumorA");
    const std::string file = CBackupsFolder::Path() + "\\" + kFirst + "\\MACHINE.VellumorA.bck";
    const CUniqueFile use(::CreateFileA(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    Names rows;
    std::size_t messages = 0;
    SUBCASE("alone, without a word") {
        WithDialog([&] {
            Choose({kFirst});
            Press(kDelete);
            rows = ListedNames();
        });
        CHECK(rows == Names{kFirst, kSecond});
        messages = 1;
    }
    SUBCASE("among several") {
        WithDialog([&] {
            Choose({kFirst, kSecond});
            Press(kDelete);
            rows = ListedNames();
        });
        CHECK(rows == Names{kFirst});
        messages = 2;
    }
    CHECK(actions.messages.size() == messages);
    CHECK(Exists(file));
}
