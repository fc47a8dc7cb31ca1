#include "tests/e2e/program.h"

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
