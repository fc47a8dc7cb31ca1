#include <doctest/doctest.h>

#include "platform/folder_tree.h"
#include "tests/console/shared_modules.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/program_files.h"

namespace {

constexpr char kFirst[] = R"(C:\gone\a.dll)";
constexpr char kSecond[] = R"(C:\gone\b.dll)";

/// How many values a command tells to have deleted.
int DeletionsToldBy(const CConsoleBench& bench) {
    int count = 0;
    for (const std::string& line : LinesOf(bench.terminal.output))
        count += line.starts_with("value deleted: ");
    return count;
}

}  // namespace

TEST_CASE("a cleaning tells of each entry what became of it, whichever call fails") {
    RunWithFaults("clean", [](CFaultRun& run) {
        const CProgramSubfolder undo("Undo");
        const CSharedModules modules{kFirst, kSecond};
        CConsoleBench bench;
        ExitCode code = ExitCode::Failed;
        run.During([&] { code = bench.Run({"clean", "--all", "--only", "shared-modules", "--yes"}); });
        const int gone = !modules.Has(kFirst) + !modules.Has(kSecond);
        run.Demand(DeletionsToldBy(bench) == gone, "another number of deletions was told");
        run.Demand(run.HasFault() || code == ExitCode::Done, "it was not done");
        // Whether an undo file can be written is tried before anything is changed.
        if (run.FailsFirst({"CreateFileA", "WriteFile"}))
            run.Demand(gone == 0 && code == ExitCode::Failed, "it went ahead without an undo file");
        (void)DeleteFolderTree("\\Undo");  // where the program's folder is not known
    });
}
