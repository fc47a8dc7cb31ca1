#include <doctest/doctest.h>

#include "tests/e2e/planted_values.h"
#include "tests/e2e/program.h"

namespace {

bool ComesOrEnds(const CAppDriver& app) { return !app.IsRunning() || app.ShownMessageBox(); }

}  // namespace

TEST_CASE("closing the window ends the program with exit code 0") {
    const FreshApp app;
    app.PostClose();
    CHECK(app.WaitForExit() == 0);
}

TEST_CASE("the exit command ends the program with exit code 0") {
    const FreshApp app;
    app.Post(commands::kExit);
    CHECK(app.WaitForExit() == 0);
}

TEST_CASE("closing the window with rows in the list ends the program") {
    PlantedValues();
    const FreshApp app;
    RunCanceledAnalysis(app, 7);
    app.PostClose();
    CHECK(app.WaitForExit() == 0);
}

TEST_CASE("closing the window right after Cancel ends the program") {
    PlantedValues();
    for (int round = 0; round < 4; ++round) {
        CAPTURE(round);
        const FreshApp app;
        const CProgressDialog dialog = StartAnalysis(app);
        WaitForRows(app, 1 + round);
        dialog.PressCancel();
        WaitFor("the end of the dialog", [&] { return !dialog.Exists(); });
        app.PostClose();
        // The worker may have been faster: its box ignores the closing, and waits for its button.
        WaitFor("the box or the end", [&] { return ComesOrEnds(app); });
        if (app.IsRunning()) {
            DismissResult(app);
            app.PostClose();
        }
        CHECK(app.WaitForExit() == 0);
    }
}
