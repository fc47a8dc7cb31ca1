#include <doctest/doctest.h>

#include <utility>

#include "platform/folder_tree.h"
#include "repair/undo_companion.h"
#include "repair/undo_files.h"
#include "repair/undo_record.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/planted_hives.h"
#include "tests/support/program_files.h"
#include "tests/support/recording_actions.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr char kName[] = "2009.05.14.16.03.27.reg";

/// An undo file with its companion, as a cleaning writes them, and a system that only records.
struct UndoBench {
    UndoBench() {
        undo.Make();
        SetText(key.Get(), "named", "text");
        CUndoRecord record(file);
        REQUIRE(record.Export("HKEY_CURRENT_USER\\VellumorUndone", ExportedLink::Followed) == ERROR_SUCCESS);
        REQUIRE(undo.Files().size() == 2);
    }

    CProgramSubfolder undo{"Undo"};
    const std::string file = undo.Path() + "\\" + kName;
    CScratchKey key{HKEY_CURRENT_USER, "VellumorUndone"};
    CRecordingActions actions;
};

/// Lets one write break off in the middle, as on a full disk.
struct HalfWrite {
    static inline FARPROC before = nullptr;
    static inline bool isDue = false;

    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED waits) {
        const auto write = reinterpret_cast<decltype(&::WriteFile)>(reinterpret_cast<void*>(before));
        if (!std::exchange(isDue, false)) return write(file, bytes, count, written, waits);
        write(file, bytes, count / 2, written, waits);
        ::SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }

    CCallHook hook{"WriteFile", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Write)), &before};
};

}  // namespace

TEST_CASE("a replay tells the truth, whichever call fails") {
    RunWithFaults("replay", [](CFaultRun& run) {
        const UndoBench bench;
        bool isReplayed = false;
        run.During([&] { isReplayed = ReplayUndoFile(kName); });
        run.Demand(run.HasFault() || isReplayed, "it was not replayed");
        run.Demand(isReplayed == (bench.actions.asked.size() == 1), "another answer was told");
        run.Demand(bench.undo.Files().size() == 2, "a file is gone");
    });
}

TEST_CASE("a forged undo file is never replayed, whichever call fails") {
    RunWithFaults("forged file", [](CFaultRun& run) {
        const UndoBench bench;
        WriteFileText(bench.file, FileText(bench.file) + "\r\n[HKEY_CURRENT_USER\\VellumorForeign]\r\n\r\n");
        bool isReplayed = false;
        run.During([&] { isReplayed = ReplayUndoFile(kName); });
        run.Demand(!isReplayed && bench.actions.asked.empty(), "it was replayed");
    });
}

TEST_CASE("undo files are listed and deleted as told, whichever call fails") {
    RunWithFaults("undo files", [](CFaultRun& run) {
        const UndoBench bench;
        std::vector<std::string> names;
        bool isDeleted = false;
        run.During([&] {
            (void)MakeUndoFileName();
            names = FindUndoFiles();
            isDeleted = DeleteUndoFile(kName);
        });
        (void)DeleteFolderTree("\\Undo");  // a new file goes there where the program's folder is not known
        run.Demand(names.empty() || names == std::vector<std::string>{kName}, "other files are listed");
        run.Demand(isDeleted == !bench.undo.HasFile(kName), "another answer was told");
        run.Demand(run.HasFault() || bench.undo.Files().empty(), "something is left");
    });
}

TEST_CASE("a line that a companion has no room for goes again, or keeps the file from being replayed") {
    RunWithFaults("full disk", [](CFaultRun& run) {
        const UndoBench bench;
        const std::string companion = bench.undo.Path() + "\\" + bench.undo.Files().front();
        const std::string before = FileText(companion);
        bool isAdded = true;
        run.During([&] {
            const HalfWrite hook;
            HalfWrite::isDue = true;
            isAdded = AddToCompanion(bench.file, "HKEY_CURRENT_USER\\VellumorOther");
        });
        HalfWrite::isDue = false;
        run.Demand(!isAdded, "it was told to be added");
        run.Demand(FileText(companion) == before || run.HasFault(), "half of a line is left");
        // The next line ends the half one.
        (void)AddToCompanion(bench.file, "HKEY_CURRENT_USER\\VellumorThird");
        WriteFileText(bench.file, FileText(bench.file) + "\r\n[HKEY_CURRENT_USER\\Vell]\r\n\r\n");
        run.Demand(!MayReplay(bench.file), "half of a name allows a replay");
    });
}
