#pragma once

#include <string>

#include "tests/driver/app_driver.h"

/// The folder of this test program, where the built vellumor.exe lies too.
[[nodiscard]] std::string TestFolder();
[[nodiscard]] std::string VellumorExe();

/// Whether the registry is that of a Wine prefix, which can be thrown away.
[[nodiscard]] bool RunsUnderWine();

/// Runs the tests of this program; on a machine that is in use only where the environment asks for it, since
/// they change the registry.
[[nodiscard]] int RunTests(int argc, char** argv);

/// The milliseconds that a whole analysis may take.
constexpr DWORD kAnalysisPatience = 180'000;

/// A running program that nothing has been done with.
struct FreshApp : CAppDriver {
    FreshApp() : CAppDriver(VellumorExe()) {}
};

/// Starts an analysis. @return its dialog, shown.
CProgressDialog StartAnalysis(const CAppDriver& app);
/// Waits for the box that ends an analysis and dismisses it. @return its text.
std::string DismissResult(const CAppDriver& app, DWORD patience = kPatience);
/// Starts an analysis and waits for its end. @return the closing box's text.
std::string RunAnalysis(const CAppDriver& app);
/// Waits until the list has at least `count` rows.
void WaitForRows(const CAppDriver& app, int count);
/// Starts an analysis and cancels it as soon as the list has `count` rows. @return the closing box's text.
std::string RunCanceledAnalysis(const CAppDriver& app, int count);

/// Has the Undo dialog replay the only file that it shows; its questions are left to be answered.
/// @return the file's date, as shown.
std::string UndoOnlyFile(const CAppDriver& app);

/// The closing box's text for so many rows.
[[nodiscard]] std::string CompletedText(int rows);
[[nodiscard]] std::string CanceledText(int rows);
