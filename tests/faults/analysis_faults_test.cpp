#include <doctest/doctest.h>

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <optional>

#include "analysis/analysis_run.h"
#include "console/analysis_window.h"
#include "tests/e2e/rule_plants.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/scratch_key.h"

namespace {

/// While it lives, this process finds a registry that holds something for every rule of every check, and
/// nothing else.
class CPlantedRegistry {
public:
    CPlantedRegistry() {
        Override(HKEY_CLASSES_ROOT, m_key.Add("Machine\\Software\\Classes"));
        Override(HKEY_USERS, m_key.Add("Users"));
        Override(HKEY_LOCAL_MACHINE, m_key.Add("Machine"));
        Override(HKEY_CURRENT_USER, m_key.Add("User"));
        m_plants.emplace();
    }
    CPlantedRegistry(const CPlantedRegistry&) = delete;
    CPlantedRegistry& operator=(const CPlantedRegistry&) = delete;
    ~CPlantedRegistry() {
        m_plants.reset();
        for (HKEY root : {HKEY_CLASSES_ROOT, HKEY_USERS, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
            Override(root, nullptr);
    }

private:
    static void Override(HKEY root, HKEY key) { REQUIRE(::RegOverridePredefKey(root, key) == ERROR_SUCCESS); }

    CScratchKey m_key;
    std::optional<CRulePlants> m_plants;
};

/// What it takes to run one stage after the other is all that an analysis cannot do without.
void DemandEnd(CFaultRun& run, CAnalysisWindow::End end) {
    using End = CAnalysisWindow::End;
    const bool isOnce = run.FailsOnce("CreateEventA") || run.FailsOnce("PostMessageA");
    if (run.IsFaultOf({"_beginthreadex"}) || (run.IsFaultOf({"CreateEventA"}) && !isOnce))
        run.Demand(end == End::Failed, "it was not told as failed");
    else if (run.IsFaultOf({"PostMessageA"}) && !isOnce)
        run.Demand(end == End::Canceled, "it was not told as broken off");
    else
        run.Demand(end == End::Done, "it was not done");
}

bool IsOfEmptyPath(const Row& row) { return row.valueName == "SlowInfoCache" && row.dataReference.empty(); }

/// A host that takes nothing.
class CNobody : public CAnalysisHost {
public:
    void TakeRow(const AnalysisChannel&, const AnalysisContext&) override {}
    void TakeProgress(const char*) override {}
    void TakeDone() override {}
    void TakeCanceled() override {}
};

std::atomic<bool> g_hasWorked = false;

UINT WorkForAWhile(void*) {
    ::SleepEx(300, FALSE);  // a pause that no fault cuts short
    g_hasWorked = true;
    return 0;
}

}  // namespace

TEST_CASE("an analysis ends, whichever call fails") {
    const CPlantedRegistry planted;
    std::size_t rows = 0;
    std::ptrdiff_t emptyPaths = 0;
    RunWithFaults("analysis", [&](CFaultRun& run) {
        std::optional<CAnalysisWindow> window;
        CAnalysisWindow::End end = CAnalysisWindow::End::Failed;
        run.During([&] { end = window.emplace(nullptr).Run(nullptr); });
        DemandEnd(run, end);
        if (run.FailsOnce("CreateEventA"))
            run.Demand(window->CancelEvent() != nullptr, "nobody could cancel it");
        const std::ptrdiff_t empty = std::ranges::count_if(window->Rows(), &IsOfEmptyPath);
        if (run.IsFaultOf({"WideCharToMultiByte"}))
            run.Demand(empty <= emptyPaths, "a path was reported that is not there");
        if (run.HasFault()) return;
        if (rows == 0) {
            rows = window->Rows().size();
            emptyPaths = empty;
        }
        run.Demand(rows != 0 && window->Rows().size() == rows, "other rows were found");
    });
}

TEST_CASE("a worker is not forgotten while it runs, though nobody can wait for messages") {
    CNobody nobody;
    CAnalysisRun analysis(nobody);
    const Fault fault{&FaultFunctionNamed("MsgWaitForMultipleObjectsEx"), 1, kForEver, ERROR_INVALID_HANDLE};
    for (const DWORD patience : {DWORD{INFINITE}, DWORD{5000}, DWORD{60}}) {
        CAPTURE(patience);
        g_hasWorked = false;
        {
            const CFaultInForce inForce(&fault);
            REQUIRE(analysis.StartWorker(nullptr, &WorkForAWhile, nullptr, THREAD_PRIORITY_NORMAL));
            analysis.WaitForWorker(patience);
        }
        CHECK(g_hasWorked == (patience > 1000));
        for (int round = 0; round < 500 && !g_hasWorked; ++round) ::Sleep(10);
        CHECK(g_hasWorked);
    }
}
