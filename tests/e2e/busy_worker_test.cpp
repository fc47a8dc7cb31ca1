#include <doctest/doctest.h>

#include "tests/driver/frozen_worker.h"
#include "tests/e2e/full_analysis.h"
#include "tests/e2e/planted_values.h"

namespace {

/// A program whose analysis was cancelled while its worker hangs.
struct BusyApp : FreshApp {
    BusyApp() {
        PlantedValues();
        RunCanceledAnalysis(*this, 1);  // the first one brings threads that stay
        Settle();
        const std::vector<DWORD> threads = Threads();
        const CProgressDialog dialog = StartAnalysis(*this);
        WaitForRows(*this, 1);
        worker = FreezeWorker(*this, threads);
        dialog.PressCancel();
        WaitFor("the end of the dialog", [&] { return !dialog.Exists(); });
    }
    std::unique_ptr<CFrozenThread> worker;
};

}  // namespace

TEST_CASE("Cancel ends the dialog without waiting for a busy worker, and the box comes when it notices") {
    BusyApp app;
    CHECK(::IsWindowEnabled(app.Frame()) != FALSE);
    CHECK(StaysFalse([&] { return app.ShownMessageBox().has_value(); }, 300));
    app.worker.reset();
    const std::string text = DismissResult(app);
    CHECK(text == CanceledText(app.List().Count()));
}

TEST_CASE("an analysis started while the cancelled worker is still busy is the only one that runs") {
    const std::vector<ListRow>& all = FullAnalysis().rows;
    BusyApp app;
    app.Post(commands::kAnalyze);
    ::Sleep(200);  // it has to wait for the former worker
    app.worker.reset();
    CHECK(DismissResult(app).starts_with("Registry analyzing canceled, "));
    CHECK(DismissResult(app, kAnalysisPatience) == CompletedText(static_cast<int>(all.size())));
    CHECK(app.List().Rows() == all);
}

TEST_CASE("closing the window ends the program although the cancelled worker hangs") {
    BusyApp app;
    app.PostClose();
    CHECK(app.WaitForExit() == 0);
}
