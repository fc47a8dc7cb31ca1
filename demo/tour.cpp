// Shows the real program around, from outside through its window: runs one analysis,
// cleans one row and brings it back, and takes a picture of each stop on the way.

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "demo/visits.h"
#include "platform/program_folder.h"
#include "tests/driver/app_driver.h"

namespace {

constexpr DWORD kAnalysisPatience = 300'000;  // milliseconds
constexpr char kPlanted[] = "Vellumor Demo";

int CountPlanted(const std::vector<ListRow>& rows) {
    return static_cast<int>(std::ranges::count_if(
        rows, [](const ListRow& row) { return row.key.find(kPlanted) != std::string::npos; }));
}

/// To the height of the first rows, for the picture.
void ShrinkWindow(const CAppDriver& app) {
    constexpr int kWidth = 1070;
    constexpr int kHeight = 330;
    ::SetWindowPos(app.Frame(), nullptr, 0, 0, kWidth, kHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int RunTour() {
    const CAppDriver app(ProgramFolder() + "\\vellumor.exe");
    ::SendMessageA(app.ToolBar(), TB_SETHOTITEM, 0, 0);  // as under the mouse
    Picture("start");
    app.Post(commands::kAnalyze);
    const CProgressDialog progress = app.WaitForProgressDialog();
    WaitFor(
        "a first row", [&app] { return app.List().Count() > 0; }, kAnalysisPatience);
    WaitFor("the row's key in the dialog", [&progress] { return !progress.LastKey().empty(); });
    Picture("progress-dialog");

    const CMessageBox box = app.WaitForMessageBox(kAnalysisPatience);
    Picture("analysis-result");
    const std::string message = box.Text();
    box.Dismiss();
    app.List().Check(0, true);
    ShrinkWindow(app);
    Picture("main-window");

    const std::vector<ListRow> rows = app.List().Rows();
    const int planted = CountPlanted(rows);
    std::printf("%s\n%d of the %u rows were planted by the demo (demo/plant.reg explains them).\n",
                message.c_str(), planted, static_cast<unsigned>(rows.size()));
    const bool agree =
        message.find(" " + std::to_string(rows.size()) + " invalid entries") != std::string::npos;
    if (!agree) std::puts("The message does not name the number of rows.");
    const bool undone = VisitCleaningAndUndo(app);
    std::puts(undone ? "One row was cleaned and brought back from its undo file."
                     : "The row that was to be cleaned is still there.");
    VisitBackupAndRestore(app);
    VisitCompaction(app);
    VisitAboutBox(app);
    app.PostClose();
    return agree && undone && app.WaitForExit() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main() {
    try {
        return RunTour();
    } catch (const std::exception& error) {
        std::printf("The demo failed: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
