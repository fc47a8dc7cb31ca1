#include "demo/visits.h"

#include <cstdio>

#include "platform/owners.h"
#include "tests/driver/dialog_driver.h"
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

void VisitDialogs(const CAppDriver& app) {
    app.Post(commands::kBackup);
    PictureAndAnswer(app, "backup-question", "Yes");
    PictureAndAnswer(app, "backup-result", "OK");
    app.Post(commands::kRestore);
    const HWND restoreDialog = WaitForDialog(app, "Restore backup");
    Picture("restore-dialog");
    PressButton(restoreDialog, IDCANCEL);
    app.Post(commands::kCompact);
    PictureAndAnswer(app, "compact-question", "No");
    app.Post(commands::kAbout);
    const HWND aboutBox = WaitForDialog(app, "About Vellumor");
    Picture("about-box");
    PressButton(aboutBox, IDOK);
}
