#include <doctest/doctest.h>

#include "platform/folder_tree.h"
#include "repair/undo_companion.h"
#include "repair/undo_name_rules.h"
#include "tests/console/shared_modules.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/file_text.h"
#include "tests/support/program_files.h"

namespace {

constexpr char kFirst[] = R"(C:\gone\a.dll)";
constexpr char kSecond[] = R"(C:\gone\b.dll)";

constexpr char kProgram[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\VellumorGone.exe)";

/// How many lines of a command's output begin so.
int CountTold(const CConsoleBench& bench, const char* deed) {
    int count = 0;
    for (const std::string& line : LinesOf(bench.terminal.output)) count += line.starts_with(deed);
    return count;
}

/// The text of the command's undo file; nothing where it may not be replayed, or would be replayed unread.
std::string TextToReplay(const CProgramSubfolder& undo) {
    std::string text;
    for (const std::string& name : undo.Files()) {
        const std::string file = undo.Path() + "\\" + name;
        if (name.ends_with(".reg") && undo.HasFile(CompanionName(name)) && MayReplay(file))
            text += FileText(file);
    }
    return text;
}

/// How many of these lines are in a text.
int CountLines(const std::string& text, std::initializer_list<const char*> lines) {
    int count = 0;
    for (const char* line : lines) count += text.find(line) != std::string::npos;
    return count;
}

/// A registered program that is not there, with a subkey; the check "program-paths" finds it, and cleaning
/// removes its key.
struct GoneProgram {
    GoneProgram() {
        SetText(key.Get(), "", R"(C:\gone\a.exe)");
        SetText(key.Add("sub"), "deep", "text");
        SetText(key.Add(R"(sub\below)"), "deeper", "text");
    }
    [[nodiscard]] static bool Has(const char* below, const char* name) {
        CUniqueKey opened;
        return ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, (std::string(kProgram) + below).c_str(), 0,
                               KEY_QUERY_VALUE, opened.Receive()) == ERROR_SUCCESS &&
               ::RegQueryValueExA(opened.Get(), name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    }

    CScratchKey key{HKEY_LOCAL_MACHINE, kProgram};
};

}  // namespace

TEST_CASE("a cleaning tells of each entry what became of it, whichever call fails") {
    RunWithFaults("clean", [](CFaultRun& run) {
        const CProgramSubfolder undo("Undo");
        const CSharedModules modules{kFirst, kSecond};
        CConsoleBench bench;
        ExitCode code = ExitCode::Failed;
        run.During([&] { code = bench.Run({"clean", "--all", "--only", "shared-modules", "--yes"}); });
        const int gone = !modules.Has(kFirst) + !modules.Has(kSecond);
        run.Demand(CountTold(bench, "value deleted: ") == gone, "another number of deletions was told");
        run.Demand(run.HasFault() || code == ExitCode::Done, "it was not done");
        if (run.FailsFirst({"CreateFileA"}))
            run.Demand(gone == 0 && code == ExitCode::Failed, "it went ahead without an undo file");
        const int copies = CountLines(TextToReplay(undo), {R"(\\gone\\a.dll"=)", R"(\\gone\\b.dll"=)"});
        run.Demand(copies >= gone, "something is gone without a copy that can be replayed");
        (void)DeleteFolderTree("\\Undo");  // where the program's folder is not known
    });
}

TEST_CASE("a key that a cleaning removes with all below it can be brought back, whichever call fails") {
    RunWithFaults("clean a unit", [](CFaultRun& run) {
        const CProgramSubfolder undo("Undo");
        const GoneProgram program;
        CConsoleBench bench;
        ExitCode code = ExitCode::Failed;
        run.During([&] {
            code = bench.Run(
                {"clean", "--all", "--only", "program-paths", "--match", "*\\VellumorGone.exe", "--yes"});
        });
        const int gone = !GoneProgram::Has("", "") + !GoneProgram::Has(R"(\sub)", "deep") +
                         !GoneProgram::Has(R"(\sub\below)", "deeper");
        run.Demand((CountTold(bench, "key removed: ") == 1) == (gone == 3), "another removal was told");
        run.Demand(run.HasFault() || (code == ExitCode::Done && gone == 3), "it was not done");
        if (run.FailsFirst({"CreateFileA"}))
            run.Demand(gone == 0 && code == ExitCode::Failed, "it went ahead without an undo file");
        const int copies = CountLines(TextToReplay(undo),
                                      {R"(@="C:\\gone\\a.exe")", R"("deep"="text")", R"("deeper"="text")"});
        run.Demand(gone == 0 || copies == 3, "something is gone without a copy that can be replayed");
        (void)DeleteFolderTree("\\Undo");  // where the program's folder is not known
    });
}
