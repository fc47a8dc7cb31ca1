#include "tests/e2e/program.h"

#include <doctest/doctest.h>

#include <cstdio>
#include <cstdlib>

#include "tests/driver/dialog_driver.h"
#include "tests/driver/screen.h"

namespace {

std::string FoundText(int rows) {
    return rows == 0 ? "no invalid entry found." : std::to_string(rows) + " invalid entries found.";
}

}  // namespace

std::string TestFolder() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string file = path;
    return file.substr(0, file.rfind('\\'));
}

std::string VellumorExe() { return TestFolder() + "\\vellumor.exe"; }

bool RunsUnderWine() {
    return ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

int RunTests(int argc, char** argv) {
    if (!RunsUnderWine() && std::getenv("VELLUMOR_E2E") == nullptr) {
        std::puts(
            "These tests change the registry of a machine that is in use. Set VELLUMOR_E2E=1 to run them.");
        return EXIT_FAILURE;
    }
    doctest::Context context(argc, argv);
    return context.run();
}

std::string UndoOnlyFile(const CAppDriver& app) {
    app.Post(commands::kUndo);
    const HWND dialog = WaitForDialog(app, "Undo repair");
    const CRemoteList files(app.Process(), ::GetDlgItem(dialog, 1027));
    REQUIRE(files.Count() == 1);
    files.Check(0, true);
    TakePicture("undo-dialog");
    const std::string date = files.Cell(0, 1);
    PressButton(dialog, IDOK);
    return date;
}

CProgressDialog StartAnalysis(const CAppDriver& app) {
    app.Post(commands::kAnalyze);
    return app.WaitForProgressDialog();
}

std::string DismissResult(const CAppDriver& app, DWORD patience) {
    const CMessageBox box = app.WaitForMessageBox(patience);
    const std::string text = box.Text();
    box.Dismiss();
    return text;
}

std::string RunAnalysis(const CAppDriver& app) {
    StartAnalysis(app);
    return DismissResult(app, kAnalysisPatience);
}

void WaitForRows(const CAppDriver& app, int count) {
    WaitFor(std::to_string(count) + " rows", [&] { return app.List().Count() >= count; });
}

std::string RunCanceledAnalysis(const CAppDriver& app, int count) {
    const CProgressDialog dialog = StartAnalysis(app);
    WaitForRows(app, count);
    dialog.PressCancel();
    return DismissResult(app);
}

std::string CompletedText(int rows) {
    return "Registry analyzing completed successfully, " + FoundText(rows);
}

std::string CanceledText(int rows) { return "Registry analyzing canceled, " + FoundText(rows); }
