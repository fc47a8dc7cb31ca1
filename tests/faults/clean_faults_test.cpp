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

/// How many of the values stand in the command's undo file.
int CopiesIn(const CProgramSubfolder& undo) {
    std::string text;
    for (const std::string& file : undo.Files())
        if (file.ends_with(".reg")) text += TextOfFile(undo.Path() + "\\" + file);
    int count = 0;
    for (const char* name : {R"(\\gone\\a.dll"=)", R"(\\gone\\b.dll"=)"})
        count += text.find(name) != std::string::npos;
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
        if (run.FailsFirst({"CreateFileA"}))
            run.Demand(gone == 0 && code == ExitCode::Failed, "it went ahead without an undo file");
        run.Demand(gone == 0 || CopiesIn(undo) >= gone, "something is gone without a copy");
        (void)DeleteFolderTree("\\Undo");  // where the program's folder is not known
    });
}
