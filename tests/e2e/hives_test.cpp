#include <windows.h>

#include <commctrl.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "tests/driver/dialog_driver.h"
#include "tests/driver/frozen_worker.h"
#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/program_copy.h"
#include "tests/support/file_text.h"
#include "tests/support/planted_hives.h"

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr char kFirst[] = "2009.05.14.16.03.27";
constexpr char kSecond[] = "2010.01.02.03.04.05";

/// The running program over a planted hive list, with a folder of its own for backups. Nothing here may come
/// to the restart that ends a restore or a compaction, for it would end the test too.
struct Fixture {
    CPlantedHives hives;
    CProgramCopy copy;
    CAppDriver app{copy.Executable(), (copy / "").string()};

    /// Answers the message box that is shown, after a look at it. @return its text.
    std::string Answer(const char* button, const char* icon, const Names& buttons) const {
        const CMessageBox box = app.WaitForMessageBox();
        const std::string text = box.Text();
        CAPTURE(text);
        CHECK_FALSE(IsIdle());  // the window waits for the answer
        CHECK(box.Caption() == "Vellumor v4.55");
        CHECK(box.Buttons() == buttons);
        REQUIRE(box.Icon() != nullptr);
        CHECK(ShownSystemIcon(box.Icon(), icon) == icon);
        box.Dismiss(button);
        return text;
    }
    std::string AnswerQuestion(const char* button) const { return Answer(button, "question", {"Yes", "No"}); }
    std::string DismissNote() const { return Answer("OK", "information", {"OK"}); }

    [[nodiscard]] HWND WaitForDialogWith(int control) const {
        return WaitFor("the dialog", [&]() -> HWND {
            for (const HWND window : TopWindowsOf(app.ProcessId()))
                if (HasClass(window, "#32770") && ::GetDlgItem(window, control) != nullptr) return window;
            return nullptr;
        });
    }
    [[nodiscard]] bool IsIdle() const { return ::IsWindowEnabled(app.Frame()) != FALSE; }
    /// Waits for the end of a command, which says nothing.
    void WaitForSilentEnd() const {
        // Between a question and the dialog that follows the window is idle for a moment too.
        const auto isBusy = [&] { return !IsIdle(); };
        bool isSilent = true;
        WaitFor("the end of the command", [&] {
            isSilent = isSilent && !app.ShownMessageBox();
            return StaysFalse(isBusy, 500);
        });
        CHECK(isSilent);
        CHECK(app.IsRunning());
    }
    [[nodiscard]] std::vector<fs::path> BackupFiles() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::recursive_directory_iterator(copy / "Backup"))
            if (entry.is_regular_file()) files.push_back(entry.path());
        std::ranges::sort(files);
        return files;
    }
};

/// Lists so many hives that a worker is at them for a while.
void AddManyHives(CPlantedHives& hives) {
    for (int number = 100; number < 300; ++number) hives.AddMachine("Vellumor" + std::to_string(number));
}

/// Suspends the worker of a backup or compaction that was started just now.
std::unique_ptr<CFrozenThread> FreezeHiveWorker(const CAppDriver& app,
                                                const std::vector<DWORD>& threadsBefore) {
    WaitFor("the worker", [&] { return app.Threads().size() > threadsBefore.size(); });
    return FreezeWorker(app, threadsBefore);
}

constexpr int kHivesBar = 1041;
constexpr int kBusyBar = 1033;
constexpr int kCompactBar = 1032;
constexpr int kSummaryList = 1034;
constexpr int kRestoreList = 1027;
constexpr int kDelete = 1029;

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a backup saves every hive of the list with the system's own call") {
    hives.AddMachine("VellumorA");
    hives.AddEntry(R"(\REGISTRY\MACHINE\Software)", R"(\Device\HarddiskVolume9\SOFTWARE)");
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorNone)", "");
    hives.AddUser("VellumorU");
    app.Post(commands::kBackup);
    CHECK(AnswerQuestion("Yes") == "Registry backup will take 3 to 5 minutes. Continue?");
    CHECK(DismissNote() == "Registry backup completed successfully.");
    WaitForSilentEnd();
    const std::vector<fs::path> files = BackupFiles();
    REQUIRE(files.size() == 3);
    Names names;
    for (const fs::path& file : files) names.push_back(file.filename().string());
    CHECK(names == Names{"MACHINE.Software.bck", "MACHINE.VellumorA.bck", "USER.VellumorU.bck"});
    CHECK(FileText(files[1].string()).find("of VellumorA") != std::string::npos);
    CHECK(fs::file_size(files[0]) > 100'000);
    CHECK(fs::is_empty(copy / "Backup\\System"));
}

TEST_CASE_FIXTURE(Fixture, "a backup that is not wanted makes nothing") {
    hives.AddMachine("VellumorA");
    app.Post(commands::kBackup);
    (void)AnswerQuestion("No");
    WaitForSilentEnd();
    CHECK_FALSE(fs::exists(copy / "Backup"));
}

TEST_CASE_FIXTURE(Fixture, "while a backup runs its dialog shows two bars and cannot be closed") {
    AddManyHives(hives);
    app.Post(commands::kBackup);
    const CMessageBox question = app.WaitForMessageBox();
    TakePicture("backup-question");
    const std::vector<DWORD> threads = app.Threads();
    question.Dismiss("Yes");
    auto worker = FreezeHiveWorker(app, threads);
    const HWND dialog = WaitForDialogWith(kHivesBar);
    CHECK(TextOf(dialog).empty());
    const HWND busy = ::GetDlgItem(dialog, kBusyBar);
    const LRESULT before = Ask(busy, PBM_GETPOS);
    WaitFor("the busy bar", [&] { return Ask(busy, PBM_GETPOS) >= before + 30; });
    for (const int button : {IDOK, IDCANCEL}) PressButton(dialog, button);
    ::PostMessageA(dialog, WM_CLOSE, 0, 0);
    app.PostClose();
    TakePicture("backup-dialog");
    CHECK(StaysFalse([&] { return ::IsWindowVisible(dialog) == FALSE || IsIdle(); }, 500));
    worker.reset();
    CHECK(DismissNote() == "Registry backup completed successfully.");
    WaitForSilentEnd();
}

TEST_CASE_FIXTURE(Fixture, "a backup that meets a hive that cannot be opened ends in silence") {
    hives.AddMachine("VellumorA");
    hives.AddMissing("VellumorB");
    hives.AddMachine("VellumorC");
    app.Post(commands::kBackup);
    (void)AnswerQuestion("Yes");
    WaitForSilentEnd();
    CHECK(BackupFiles().size() == 1);
    CHECK(::FindWindowExA(nullptr, nullptr, "#32770", "") == nullptr);
}

TEST_CASE_FIXTURE(Fixture, "the Restore dialog lists, warns, refuses and deletes, and is left by Cancel") {
    for (const char* name : {kFirst, kSecond, "System", "2011.01.02.03.04.05"})
        copy.MakeFile(std::string("Backup\\") + name + "\\MACHINE.VellumorA.bck");
    app.Post(commands::kRestore);
    CHECK(DismissNote().starts_with("Too many registry backup files"));
    const HWND dialog = WaitForDialogWith(kRestoreList);
    CHECK(TextOf(dialog) == "Restore backup");
    const CRemoteList list(app.Process(), ::GetDlgItem(dialog, kRestoreList));
    REQUIRE(list.Count() == 4);
    CHECK(list.Cell(0, 0) == kFirst);
    CHECK(list.Cell(0, 1) == "2009/05/14/16:03:27");
    CHECK(list.Cell(3, 1) == "System");
    TakePicture("restore-dialog");

    list.Check(0, true);
    list.Check(1, true);
    PressButton(dialog, IDOK);
    CHECK(DismissNote() == "Can not restore backup made on different time once.");
    list.Check(0, false);
    PressButton(dialog, kDelete);
    CHECK(AnswerQuestion("Yes") == std::string("Delete the registry backup file: ") + kSecond + " ?");
    CHECK(DismissNote() == std::string("Registry backup file: ") + kSecond + " deleted successfully.");
    CHECK(list.Count() == 3);
    CHECK_FALSE(fs::exists(copy / (std::string("Backup\\") + kSecond)));
    CHECK(fs::exists(copy / (std::string("Backup\\") + kFirst + "\\MACHINE.VellumorA.bck")));
    PressButton(dialog, IDCANCEL);
    WaitForSilentEnd();
}

TEST_CASE_FIXTURE(Fixture, "a restore of a hive that is not loaded ends in silence and restarts nothing") {
    const fs::path file = copy.MakeFile(std::string("Backup\\") + kFirst + "\\MACHINE.VellumorGone.bck");
    app.Post(commands::kRestore);
    const HWND dialog = WaitForDialogWith(kRestoreList);
    const CRemoteList list(app.Process(), ::GetDlgItem(dialog, kRestoreList));
    list.Check(0, true);
    PressButton(dialog, IDOK);
    CHECK(AnswerQuestion("Yes") == "Restore the registry backup on 2009/05/14/16:03:27?");
    WaitForSilentEnd();
    CHECK(fs::exists(file));
}

TEST_CASE_FIXTURE(Fixture, "a restore that finds its old file in use says that a restart has to come first") {
    hives.AddMachine("VellumorA");
    const fs::path file = copy.MakeFile(std::string("Backup\\") + kFirst + "\\MACHINE.VellumorA.bck");
    const fs::path old = copy.MakeFile("Backup\\System\\MACHINE.VellumorA.sys", "in use");
    const CUniqueFile use(::CreateFileA(old.string().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    app.Post(commands::kRestore);
    const HWND dialog = WaitForDialogWith(kRestoreList);
    CRemoteList(app.Process(), ::GetDlgItem(dialog, kRestoreList)).Check(0, true);
    PressButton(dialog, IDOK);
    (void)AnswerQuestion("Yes");
    CHECK(DismissNote() == "System must be restarted firstly because of sharing conflict!");
    WaitForSilentEnd();
    CHECK(FileText(old.string()) == "in use");
    CHECK(fs::exists(file));
}

TEST_CASE_FIXTURE(Fixture, "a compaction writes its files, and its summary can be closed without a restart") {
    hives.AddEntry(R"(\REGISTRY\MACHINE\Software)", hives.DevicePath("SOFTWARE"));
    AddManyHives(hives);
    hives.AddMachine("VellumorA");
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorNone)", "");
    hives.AddUser("VellumorU");
    WriteFileText(hives.FilePath("VellumorA.bak"), "of a former compaction");
    app.Post(commands::kCompact);
    const CMessageBox question = app.WaitForMessageBox();
    CHECK(question.Text() ==
          "Registry compact will take 3 to 5 minutes and other operations not recommended! Continue?");
    const std::vector<DWORD> threads = app.Threads();
    question.Dismiss("Yes");
    auto worker = FreezeHiveWorker(app, threads);
    const HWND progress = WaitForDialogWith(kCompactBar);
    CHECK_FALSE(Exists(hives.FilePath("VellumorA.bak")));
    for (const int button : {IDOK, IDCANCEL}) PressButton(progress, button);
    WaitFor("the busy bar", [&] { return Ask(::GetDlgItem(progress, kCompactBar), PBM_GETPOS) >= 30; });
    TakePicture("compact-dialog");
    CHECK(::IsWindowVisible(progress) != FALSE);
    // Wine replaces no hive, so the files that Windows would have kept are put there by hand.
    for (const char* name : {"VellumorA.bak", "VellumorU.bak", "SOFTWARE.bak"})
        WriteFileText(hives.FilePath(name), std::string(3'000'000, 'x'));
    worker.reset();

    const HWND summary = WaitForDialogWith(kSummaryList);
    CHECK(TextOf(summary) == "Compact Summary");
    const CRemoteList list(app.Process(), ::GetDlgItem(summary, kSummaryList));
    REQUIRE(list.Count() == 3);
    CHECK(list.Cell(0, 0) == hives.FilePath("SOFTWARE"));
    CHECK(list.Cell(0, 1) == " 3000000");
    CHECK(list.Cell(0, 2) == " " + std::to_string(fs::file_size(hives.FilePath("SOFTWARE.pck"))));
    CHECK(list.Cell(1, 3).ends_with("%"));
    TakePicture("compact-summary");
    CHECK_FALSE(app.ShownProgressDialog());
    ::PostMessageA(summary, WM_CLOSE, 0, 0);
    WaitForSilentEnd();
    for (const char* name : {"VellumorA", "VellumorU"})
        for (const char* ending : {".tmp", ".pck"}) CHECK(Exists(hives.FilePath(name) + ending));
}

TEST_CASE_FIXTURE(Fixture, "a compaction meets a file in use and says that a restart has to come first") {
    hives.AddMachine("VellumorA");
    WriteFileText(hives.FilePath("VellumorA.bak"), "in use");
    const CUniqueFile use(::CreateFileA(hives.FilePath("VellumorA.bak").c_str(), GENERIC_READ,
                                        FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    app.Post(commands::kCompact);
    (void)AnswerQuestion("Yes");
    CHECK(DismissNote() == "System must be restarted firstly because of sharing conflict!");
    WaitForSilentEnd();
    CHECK_FALSE(Exists(hives.FilePath("VellumorA.tmp")));
}

TEST_CASE_FIXTURE(Fixture, "a compaction that meets a hive on another volume ends in silence") {
    hives.AddMachine("VellumorB");
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorA)", R"(\Device\Cdrom0\hive)");
    app.Post(commands::kCompact);
    (void)AnswerQuestion("Yes");
    WaitForSilentEnd();
    CHECK_FALSE(Exists(hives.FilePath("VellumorB.tmp")));
}
