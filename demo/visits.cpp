#include "demo/visits.h"

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/owners.h"
#include "tests/driver/dialog_driver.h"
#include "tests/driver/frozen_worker.h"
#include "tests/driver/screen.h"

namespace {

constexpr DWORD kPaintPatience = 300;  // milliseconds until what was shown last is drawn

// An entry of demo/plant.reg whose row is a value's.
constexpr char kCleanedKey[] = R"(Software\Vellumor Demo\Removed program)";
constexpr char kCleanedValue[] = "InstallFolder";

bool EntryIsThere() {
    CUniqueKey key;
    return ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kCleanedKey, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS &&
           ::RegQueryValueExA(key.Get(), kCleanedValue, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

void CheckOnlyItsRow(const CAppDriver& app) {
    for (const int row : app.List().CheckedRows()) app.List().Check(row, false);
    const std::vector<ListRow> rows = app.List().Rows();
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (rows[row].key.ends_with(kCleanedKey) && rows[row].valueName == kCleanedValue) {
            app.List().Check(static_cast<int>(row), true);
            return;
        }
}

/// So many small hives beside the demo's own that a worker is at them for a while; gone at the end.
class CManyHives {
public:
    CManyHives() {
        for (int number = kFirst; number < kEnd; ++number) {
            CUniqueKey key;
            ::RegCreateKeyA(HKEY_LOCAL_MACHINE, Name(number).c_str(), key.Receive());
            const std::string file = R"(\Device\HarddiskVolume1\Demo\Hives\)" + Name(number);
            ::RegSetValueExA(m_list.Get(), ListedName(number).c_str(), 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(file.c_str()),
                             static_cast<DWORD>(file.size() + 1));
        }
    }
    CManyHives(const CManyHives&) = delete;
    CManyHives& operator=(const CManyHives&) = delete;
    ~CManyHives() {
        for (int number = kFirst; number < kEnd; ++number) {
            ::RegDeleteValueA(m_list.Get(), ListedName(number).c_str());
            ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, Name(number).c_str());
        }
    }

private:
    static constexpr int kFirst = 100;
    static constexpr int kEnd = 300;

    static std::string Name(int number) { return "VellumorDemo" + std::to_string(number); }
    static std::string ListedName(int number) {
        std::string name = R"(\REGISTRY\MACHINE\)";
        return name.append(Name(number));
    }
    static CUniqueKey OpenList() {
        CUniqueKey list;
        ::RegCreateKeyA(HKEY_LOCAL_MACHINE, R"(System\CurrentControlSet\Control\hivelist)", list.Receive());
        return list;
    }

    CUniqueKey m_list = OpenList();
};

/// Starts a command on hives, and holds its worker once its progress dialog is shown.
std::unique_ptr<CFrozenThread> StartHiveCommand(const CAppDriver& app, unsigned command,
                                                const char* picture) {
    app.Post(command);
    const CMessageBox question = app.WaitForMessageBox();
    Picture(picture);
    const std::vector<DWORD> threads = app.Threads();
    question.Dismiss("Yes");
    WaitFor("the worker", [&] { return app.Threads().size() > threads.size(); });
    return FreezeWorker(app, threads);
}

/// Takes a picture of the box that is shown next, and presses a button of it.
void PictureAndAnswer(const CAppDriver& app, const char* picture, const char* button) {
    const CMessageBox box = app.WaitForMessageBox();
    Picture(picture);
    box.Dismiss(button);
}

}  // namespace

void Picture(const char* name) {
    ::Sleep(kPaintPatience);
    // Without the service there are no pictures, and the table is still worth having.
    (void)TakePicture(name);
}

bool VisitCleaningAndUndo(const CAppDriver& app) {
    CheckOnlyItsRow(app);
    app.Post(commands::kClean);
    PictureAndAnswer(app, "clean-question", "OK");
    PictureAndAnswer(app, "clean-result", "OK");
    const bool wasCleaned = !EntryIsThere();

    app.Post(commands::kUndo);
    const HWND dialog = WaitForDialog(app, "Undo repair");
    const CRemoteList files(app.Process(), ::GetDlgItem(dialog, 1027));
    files.Check(files.Count() - 1, true);
    Picture("undo-dialog");
    PressButton(dialog, IDOK);
    AnswerBox(app, "Undo the", "Yes");
    PictureAndAnswer(app, "undo-result", "OK");
    WaitFor("the entry to be back", EntryIsThere);
    return wasCleaned;
}

void VisitBackupAndRestore(const CAppDriver& app) {
    const CManyHives hives;
    const auto worker = StartHiveCommand(app, commands::kBackup, "backup-question");
    Picture("backup-dialog");
    worker->Resume();
    PictureAndAnswer(app, "backup-result", "OK");
    app.Post(commands::kRestore);
    const HWND dialog = WaitForDialog(app, "Restore backup");
    Picture("restore-dialog");
    PressButton(dialog, IDCANCEL);
}

void VisitCompaction(const CAppDriver& app) {
    const CManyHives hives;
    const auto worker = StartHiveCommand(app, commands::kCompact, "compact-question");
    Picture("compact-dialog");
    // Wine replaces no hive, so the files that Windows would have kept are put there by hand.
    for (const char* hive : {"SOFTWARE", "SYSTEM", "DEFAULT"})
        std::ofstream(std::string(R"(C:\Demo\Hives\)") + hive + ".bak") << std::string(2'000'000, 'x');
    worker->Resume();
    const HWND summary = WaitForDialog(app, "Compact Summary");
    Picture("compact-summary");
    ::PostMessageA(summary, WM_CLOSE, 0, 0);  // OK would restart the system
}

void VisitAboutBox(const CAppDriver& app) {
    app.Post(commands::kAbout);
    const HWND aboutBox = WaitForDialog(app, "About Vellumor");
    Picture("about-box");
    PressButton(aboutBox, IDOK);
}
