// Shows the real program around, from outside through its window: runs one analysis, prints the rows that
// were found as a table, cleans one and brings it back, and takes a picture of each stop on the way.

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

using Line = std::vector<std::string>;

void PrintTable(const std::vector<Line>& lines) {
    std::vector<std::size_t> widths;
    for (const Line& line : lines)
        for (std::size_t column = 0; column < line.size(); ++column) {
            if (column == widths.size()) widths.push_back(0);
            widths[column] = std::max(widths[column], line[column].size());
        }
    for (const Line& line : lines) {
        std::string text;
        for (std::size_t column = 0; column < line.size(); ++column) {
            text += line[column];
            if (column + 1 < line.size()) text.append(widths[column] - line[column].size() + 2, ' ');
        }
        std::puts(text.c_str());
    }
}

int PrintRows(const std::vector<ListRow>& rows) {
    std::vector<Line> lines{
        {"Questionable Registry Key", "Write Time", "Value Name", "Questionable Data Reference"}};
    int planted = 0;
    for (const ListRow& row : rows) {
        lines.push_back({row.key, row.writeTime, row.valueName, row.dataReference});
        if (row.key.find(kPlanted) != std::string::npos) ++planted;
    }
    PrintTable(lines);
    return planted;
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
    const int planted = PrintRows(rows);
    std::printf("\n%s\n%d of the %u rows were planted by the demo (demo/plant.reg explains them).\n",
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
