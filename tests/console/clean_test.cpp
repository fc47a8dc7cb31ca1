#include <doctest/doctest.h>

#include "console/interruption.h"
#include "console/row_formats.h"
#include "tests/console/shared_modules.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"
#include "tests/support/planted_hives.h"
#include "tests/support/program_files.h"

namespace {

constexpr char kFirst[] = R"(C:\gone\a.dll)";
constexpr char kSecond[] = R"(C:\gone\b.dll)";

using Lines = std::vector<std::string>;
using Rows = std::vector<Row>;

struct CleanBench : CConsoleBench {
    /// Cleans rows that are given on standard input.
    ExitCode CleanRows(const Rows& rows, const std::vector<std::string>& options = {"--yes"}) {
        terminal.input = WriteRows(rows, RowFormat::Json, true);
        std::vector<std::string> line{"clean", "--rows", "-"};
        line.insert(line.end(), options.begin(), options.end());
        return Run(line);
    }
    ExitCode CleanAll(const std::vector<std::string>& options = {"--yes"}) {
        std::vector<std::string> line{"clean", "--all", "--only", "shared-modules"};
        line.insert(line.end(), options.begin(), options.end());
        return Run(line);
    }
    [[nodiscard]] std::string UndoFile() const {
        // The companion of the one file comes before it.
        const std::vector<std::string> files = undo.Files();
        return files.size() == 2 && files.front().ends_with(".branches") ? undo.Path() + "\\" + files.back()
                                                                         : "";
    }
    void CheckNothingChanged() const {
        CHECK(modules.Has(kFirst));
        CHECK(modules.Has(kSecond));
        CHECK(undo.Files().empty());
    }

    CProgramSubfolder undo{"Undo"};
    CSharedModules modules{kFirst, kSecond};
    const Row first = CSharedModules::RowOf(kFirst);
    const Row second = CSharedModules::RowOf(kSecond);
};

FARPROC Address(decltype(&::RegDeleteValueA) function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

LSTATUS WINAPI RefuseToDelete(HKEY, LPCSTR) { return ERROR_WRITE_PROTECT; }

BOOL WINAPI RefuseToWrite(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) {
    *written = 0;
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

LSTATUS WINAPI DeleteAndInterrupt(HKEY key, LPCSTR name) {
    CHECK(Interrupt());
    return ::RegDeleteValueW(key, std::wstring(name, name + ::lstrlenA(name)).c_str());
}

std::string Deleted(const char* path) { return "value deleted: " + CSharedModules::EntryOf(path); }
std::string NotFound(const Row& row) {
    return "not cleaned: " + row.key + "\\\"" + row.valueName +
           "\": this machine has no such entry, or not one that is reported so\n";
}

}  // namespace

TEST_CASE_FIXTURE(CleanBench, "the named rows are cleaned from the last to the first, and no other") {
    modules.Add(R"(C:\gone\c.dll)");
    CHECK((CleanRows({second, first}) == ExitCode::Done));
    CHECK(LinesOf(terminal.output) == Lines{Deleted(kSecond), Deleted(kFirst), "Undo file: " + UndoFile()});
    CHECK(terminal.error.empty());
    CHECK_FALSE(modules.Has(kFirst));
    CHECK_FALSE(modules.Has(kSecond));
    CHECK(modules.Has(R"(C:\gone\c.dll)"));
    CHECK(FileText(UndoFile()).find(R"("C:\\gone\\a.dll"="x")") != std::string::npos);
}

TEST_CASE_FIXTURE(CleanBench, "every row of an analysis made now can be cleaned") {
    CHECK((CleanAll() == ExitCode::Done));
    CHECK(LinesOf(terminal.output) == Lines{Deleted(kSecond), Deleted(kFirst), "Undo file: " + UndoFile()});
    CHECK((CleanAll() == ExitCode::Done));
    CHECK(terminal.output.empty());
    CHECK((CleanAll({"--dry-run"}) == ExitCode::Done));
}

TEST_CASE_FIXTURE(CleanBench, "all rows are those that the patterns leave") {
    CHECK((CleanAll({"--yes", "--exclude", "*\\SharedDlls"}) == ExitCode::Done));
    CHECK((CleanAll({"--yes", "--match", "HKEY_USERS*"}) == ExitCode::Done));
    CHECK((CleanAll({"--yes", "--skip", "shared-modules"}) == ExitCode::Done));
    CHECK(terminal.output.empty());
    CheckNothingChanged();
}

TEST_CASE_FIXTURE(CleanBench, "a trial run tells what would be done and does nothing") {
    CHECK((CleanRows({first}, {"--dry-run"}) == ExitCode::RowsFound));
    CHECK(terminal.output == "would be: " + Deleted(kFirst) + "\n");
    CHECK((CleanAll({"--dry-run"}) == ExitCode::RowsFound));
    CHECK(LinesOf(terminal.output).size() == 2);
    CheckNothingChanged();
}

TEST_CASE_FIXTURE(CleanBench, "without --yes somebody must agree, who must be there") {
    CHECK((CleanRows({first}, {}) == ExitCode::WrongUsage));
    CHECK((CleanAll({}) == ExitCode::WrongUsage));
    CHECK(terminal.error == "There is nobody to be asked here: add --yes, or --dry-run.\n");
    terminal.canAsk = true;
    for (const char* answer : {"", "n", "no", "x"}) {
        terminal.answer = answer;
        CHECK((CleanAll({}) == ExitCode::Canceled));
        CHECK(terminal.error == "Clean 2 entries? [y/N] Nothing was cleaned.\n");
    }
    CheckNothingChanged();
    terminal.answer = "Yes";
    CHECK((CleanRows({first}, {}) == ExitCode::Done));
    CHECK(terminal.error == "Clean 1 entry? [y/N] ");
    CHECK_FALSE(modules.Has(kFirst));
}

TEST_CASE_FIXTURE(CleanBench, "a row that this machine's analysis does not find is left alone and told") {
    SetText(modules.Key(), R"(C:\windows\system32\kernel32.dll)", "x");
    Row otherMachine = CSharedModules::RowOf(R"(C:\windows\system32\kernel32.dll)");
    Row otherKey = first;
    otherKey.key += "\\none";
    Row otherData = first;
    otherData.dataReference = "something else";
    Row otherCheck = first;
    otherCheck.check = "fonts";
    const Row noRoot{R"(\HKEY_NOWHERE\x)", "", "y", "", "shared-modules", ""};
    const Rows rows{otherMachine, otherKey, otherData, otherCheck, noRoot};
    CHECK((CleanRows(rows) == ExitCode::Failed));
    std::string told;
    for (const Row& row : rows) told += NotFound(row);
    CHECK(terminal.error == told);
    CHECK(terminal.output.empty());
    CheckNothingChanged();
    CHECK(modules.Has(R"(C:\windows\system32\kernel32.dll)"));
    // The others are cleaned all the same.
    CHECK((CleanRows({otherData, first}) == ExitCode::Failed));
    CHECK(LinesOf(terminal.output).front() == Deleted(kFirst));
    CHECK(terminal.error == NotFound(otherData));
    CHECK((CleanRows({otherData}, {"--dry-run"}) == ExitCode::Failed));
    ::RegDeleteValueA(modules.Key(), R"(C:\windows\system32\kernel32.dll)");
}

TEST_CASE_FIXTURE(CleanBench, "time and reason of a named row need not be those of now") {
    Row older = first;
    older.writeTime = "2001/01/01 00:00:00";
    older.reason = "It was worded otherwise.";
    CHECK((CleanRows({older}) == ExitCode::Done));
    CHECK_FALSE(modules.Has(kFirst));
}

TEST_CASE_FIXTURE(CleanBench, "a row that is named twice is cleaned once") {
    CHECK((CleanRows({first, first}) == ExitCode::Done));
    CHECK(LinesOf(terminal.output).size() == 2);
}

TEST_CASE_FIXTURE(CleanBench, "rows that cannot be read change nothing") {
    const std::string whole = WriteRows(Rows{first, second}, RowFormat::Json, true);
    Row unknown = first;
    unknown.check = "no-such-check";
    const std::string texts[] = {
        "",   "hello",           whole.substr(0, whole.size() - 4),
        "[]", R"({"rows": {}})", WriteRows(Rows{first, unknown}, RowFormat::Csv, true)};
    for (const std::string& text : texts) {
        CAPTURE(text);
        terminal.input = text;
        CHECK((Run({"clean", "--rows", "-", "--yes"}) == ExitCode::Failed));
        CHECK(terminal.error.starts_with("The rows cannot be read: "));
        CHECK(terminal.output.empty());
        CheckNothingChanged();
    }
    CHECK(terminal.error == "The rows cannot be read: row 2: no check is named \"no-such-check\".\n");
    terminal.input.reset();
    CHECK((Run({"clean", "--rows", "-", "--yes"}) == ExitCode::Failed));
    CHECK(terminal.error == "Standard input cannot be read.\n");
    CHECK((Run({"clean", "--rows", R"(C:\no such file)", "--yes"}) == ExitCode::Failed));
    CHECK(terminal.error == "The rows file C:\\no such file cannot be read.\n");
    CheckNothingChanged();
}

TEST_CASE_FIXTURE(CleanBench, "a list without rows is done at once") {
    CHECK((CleanRows({}) == ExitCode::Done));
    CHECK(terminal.output.empty());
}

TEST_CASE_FIXTURE(CleanBench, "a name with a double quote in it is not cleaned, for its text names another") {
    modules.Add(R"(C:\go"ne\a.dll)");
    const Row hostile = CSharedModules::RowOf(R"(C:\go"ne\a.dll)");
    CHECK((CleanRows({hostile}) == ExitCode::Failed));
    CHECK(terminal.error == "not cleaned: " + hostile.key + "\\\"" + hostile.valueName +
                                "\": a double quote in its name makes it name another entry\n");
    CHECK(modules.Has(R"(C:\go"ne\a.dll)"));
    CheckNothingChanged();
}

TEST_CASE_FIXTURE(CleanBench, "nothing is cleaned where no undo file can be written") {
    WriteFileText(undo.Path(), "a file in the folder's place");
    CHECK((CleanAll() == ExitCode::Failed));
    CHECK(terminal.error == "No undo file can be written in " + undo.Path() + ", so nothing was cleaned.\n");
    CHECK(terminal.output.empty());
    CHECK(modules.Has(kFirst));
    CHECK(modules.Has(kSecond));
}

TEST_CASE_FIXTURE(CleanBench, "a row of which no copy can be written is not cleaned, nor any behind it") {
    {
        const CCallHook hook("WriteFile", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&RefuseToWrite)));
        CHECK((CleanAll() == ExitCode::Failed));
    }
    CHECK(terminal.error == "not cleaned: " + CSharedModules::EntryOf(kSecond) +
                                ": no copy of it could be written, so neither it nor the rows behind it were "
                                "cleaned\n");
    CHECK(terminal.output.empty());
    CheckNothingChanged();
}

TEST_CASE_FIXTURE(CleanBench, "Ctrl+C during the analysis leaves everything as it is") {
    terminal.errorWidth = 80;
    terminal.onError = [](const std::string& text) {
        if (text.starts_with("\rStage")) CHECK(Interrupt());
    };
    CHECK((CleanAll() == ExitCode::Canceled));
    CHECK(terminal.error.ends_with("Canceled; nothing was cleaned.\n"));
    CHECK(terminal.output.empty());
    CheckNothingChanged();
}

TEST_CASE("what goes with an entry is told, and an entry that went with another is no failure") {
    CConsoleBench bench;
    const CProgramSubfolder undo("Undo");
    // Two rows for one product: its icon and its installation source are gone, and its key is no way to
    // uninstall it.
    CScratchKey product(HKEY_LOCAL_MACHINE,
                        R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\VellumorGone)");
    SetText(product.Get(), "DisplayIcon", R"(C:\gone\x.ico)");
    const std::vector<std::string> line{"clean",   "--all",          "--only", "uninstall-entries",
                                        "--match", "*\\VellumorGone"};
    auto dryRun = line;
    dryRun.emplace_back("--dry-run");
    CHECK((bench.Run(dryRun) == ExitCode::RowsFound));
    CHECK(LinesOf(bench.terminal.output) ==
          std::vector<std::string>{"would be: key removed: " + product.Path(),
                                   "would be: value deleted: " + product.Path() + "\\\"DisplayIcon\""});
    auto yes = line;
    yes.emplace_back("--yes");
    CHECK((bench.Run(yes) == ExitCode::Done));
    const std::vector<std::string> lines = LinesOf(bench.terminal.output);
    REQUIRE(lines.size() == 3);
    CHECK(lines[0] == "key removed: " + product.Path());
    CHECK(lines[1] == "nothing: " + product.Path() + "\\\"DisplayIcon\"");
    CHECK(bench.terminal.error.empty());
}

TEST_CASE("the key that goes with an entry is named where it is another, and an emptied default told") {
    CConsoleBench bench;
    const CProgramSubfolder undo("Undo");
    CScratchKey gone(HKEY_CLASSES_ROOT, "VellumorGone");
    SetText(gone.Add("DefaultIcon"), "", "");
    const std::vector<std::string> line{"clean",
                                        "--all",
                                        "--only",
                                        "commands-and-icons-of-classes",
                                        "--yes",
                                        "--match",
                                        "*\\VellumorGone\\*"};
    CHECK((bench.Run(line) == ExitCode::Done));
    CHECK(LinesOf(bench.terminal.output).front() == "default emptied: " + gone.Path() + "\\DefaultIcon");
}

TEST_CASE_FIXTURE(CleanBench, "a row that could not be changed is told, and a failure") {
    const CCallHook hook("RegDeleteValueA", Address(&RefuseToDelete));
    CHECK((CleanRows({first}) == ExitCode::Failed));
    CHECK(LinesOf(terminal.output).front() == "nothing: " + CSharedModules::EntryOf(kFirst));
    CHECK(terminal.error ==
          "not cleaned: " + CSharedModules::EntryOf(kFirst) + ": it could not be changed\n");
    CHECK(modules.Has(kFirst));
}

TEST_CASE_FIXTURE(CleanBench,
                  "a row whose name another value has in the code page, too, is refused as planned") {
    REQUIRE(SetTextByCountedName(modules.Key(), L"C:\\gone\\\xFF41.dll", L"1"));
    const std::string nothing = "nothing: " + CSharedModules::EntryOf(kFirst);
    CHECK((CleanRows({first}, {"--dry-run"}) == ExitCode::RowsFound));
    CHECK(LinesOf(terminal.output).front() == "would be: " + nothing);
    CHECK((CleanRows({first}) == ExitCode::Failed));
    CHECK(LinesOf(terminal.output).front() == nothing);
    CHECK(LinesOf(terminal.error).front() ==
          "not cleaned: " + CSharedModules::EntryOf(kFirst) + ": it could not be changed");
    CHECK(modules.Has(kFirst));
    CHECK(::RegDeleteValueW(modules.Key(), L"C:\\gone\\\xFF41.dll") == ERROR_SUCCESS);
}

TEST_CASE_FIXTURE(CleanBench, "what standard output refuses is told on standard error, and a failure") {
    terminal.refusesOutput = true;
    const std::string refused = "Standard output cannot be written: ";
    CHECK((CleanRows({first}, {"--dry-run"}) == ExitCode::Failed));
    CHECK(terminal.error == refused + "would be: " + Deleted(kFirst) + "\n");
    CHECK((CleanRows({first}) == ExitCode::Failed));
    CHECK(LinesOf(terminal.error) == Lines{refused + Deleted(kFirst), refused + "Undo file: " + UndoFile()});
    CHECK_FALSE(modules.Has(kFirst));
}

TEST_CASE_FIXTURE(CleanBench, "Ctrl+C between two rows leaves the rest as it is") {
    const CCallHook hook("RegDeleteValueA", Address(&DeleteAndInterrupt));
    CHECK((CleanAll() == ExitCode::Canceled));
    CHECK(LinesOf(terminal.output) == Lines{Deleted(kSecond), "Undo file: " + UndoFile()});
    CHECK(terminal.error == "Canceled; the entries that are not listed above were not cleaned.\n");
    CHECK(modules.Has(kFirst));
    CHECK_FALSE(modules.Has(kSecond));
}
