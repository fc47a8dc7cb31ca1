#include <doctest/doctest.h>

#include <windows.h>

#include <optional>

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

}  // namespace

TEST_CASE("an analysis ends, whichever call fails") {
    const CPlantedRegistry planted;
    std::size_t rows = 0;
    RunWithFaults("analysis", [&](CFaultRun& run) {
        CAnalysisWindow window({});
        CAnalysisWindow::End end = CAnalysisWindow::End::Failed;
        run.During([&] { end = window.Run(nullptr); });
        // What it takes to run one stage after the other is all that an analysis cannot do without.
        if (!run.IsFaultOf({"_beginthreadex", "CreateEventA", "PostMessageA"}) ||
            run.FailsOnce("PostMessageA"))
            run.Demand(end == CAnalysisWindow::End::Done, "it was not done");
        if (run.HasFault()) return;
        if (rows == 0) rows = window.Rows().size();
        run.Demand(rows != 0 && window.Rows().size() == rows, "other rows were found");
    });
}
