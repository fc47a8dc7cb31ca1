#include <doctest/doctest.h>

#include <windows.h>

#include <commctrl.h>

#include <cstdlib>

#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/program.h"

namespace {

std::vector<unsigned> ToolBarCommands(const CAppDriver& app) {
    const CRemoteMemory memory(app.Process(), sizeof(TBBUTTON));
    const LRESULT count = Ask(app.ToolBar(), TB_BUTTONCOUNT);
    std::vector<unsigned> ids;
    for (LRESULT index = 0; index < count; ++index) {
        REQUIRE(Ask(app.ToolBar(), TB_GETBUTTON, static_cast<WPARAM>(index), memory.Address()) != 0);
        ids.push_back(static_cast<unsigned>(memory.Read<TBBUTTON>().idCommand));
    }
    return ids;
}

void CheckFrame(const CAppDriver& app) {
    CHECK(TextOf(app.Frame()) == "Vellumor v4.55");
    CHECK(::IsWindowVisible(app.Frame()) != FALSE);
    CHECK(::IsWindowEnabled(app.Frame()) != FALSE);
    RECT work{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    const RECT frame = ScreenRect(app.Frame());
    CHECK(std::abs((frame.left - work.left) - (work.right - frame.right)) <= 1);
    CHECK(std::abs((frame.top - work.top) - (work.bottom - frame.bottom)) <= 1);
}

void CheckBars(const CAppDriver& app) {
    using namespace commands;
    CHECK(ToolBarCommands(app) == std::vector<unsigned>{kAnalyze, kCheck, kCheckAll, kUncheck, kClean, kUndo,
                                                        kCompact, kBackup, kRestore, kHelpContent, kAbout});
    CHECK(::IsWindowVisible(app.ToolBar()) != FALSE);
    CHECK(::IsWindowVisible(app.StatusBar()) != FALSE);
    CHECK(Ask(app.StatusBar(), SB_GETPARTS) == 4);
}

void CheckList(const CAppDriver& app) {
    CHECK(app.List().Columns() == std::vector<ListColumn>{{"Questionable Registry Key", 350, LVCFMT_LEFT},
                                                          {"Write Time", 145, LVCFMT_LEFT},
                                                          {"Value Name", 125, LVCFMT_LEFT},
                                                          {"Questionable Data Reference", 405, LVCFMT_LEFT}});
    CHECK((StyleOf(app.List().Window()) & LVS_TYPEMASK) == LVS_REPORT);
    CHECK((app.List().ExtendedStyle() & 0x25) == 0x25);
    CHECK(app.List().Count() == 0);
}

}  // namespace

TEST_CASE("the program starts with a centred window, its bars and an empty list of four columns" *
          doctest::test_suite("smoke")) {
    const FreshApp app;
    TakePicture("start");
    CheckFrame(app);
    CheckBars(app);
    CheckList(app);
}

TEST_CASE("commands on rows wait for the first row, and analysing does not") {
    const FreshApp app;
    const auto isEnabled = [&app](unsigned id) { return Ask(app.ToolBar(), TB_ISBUTTONENABLED, id) != 0; };
    for (const unsigned id : {commands::kCheck, commands::kCheckAll, commands::kUncheck, commands::kClean})
        WaitFor("the button to be disabled", [&] { return !isEnabled(id); });
    CHECK(isEnabled(commands::kAnalyze));
    RunCanceledAnalysis(app, 1);
    for (const unsigned id : {commands::kCheck, commands::kCheckAll, commands::kUncheck, commands::kClean})
        WaitFor("the button to be enabled", [&] { return isEnabled(id); });
}

TEST_CASE("the status bar explains the menu item under the cursor") {
    const FreshApp app;
    // Sent as the system sends it while a menu is open; a handle other than 0 says that it is.
    const auto select = [&app](unsigned id) { Ask(app.Frame(), WM_MENUSELECT, id, 1); };
    select(commands::kAnalyze);
    CHECK(TextOf(app.StatusBar()) == "Analyze invalid entries in the registry");
    select(commands::kRestore);
    CHECK(TextOf(app.StatusBar()) == "Restore the registry backup");
    select(commands::kToggleStatusBar);
    CHECK(TextOf(app.StatusBar()) == "Show or hide the status bar");
}
