#include <doctest/doctest.h>

#include "hives/backup.h"
#include "hives/backup_folder.h"
#include "hives/compaction.h"
#include "hives/restore.h"
#include "platform/folder_tree.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

const char* const kHives[] = {"VellumorA", "VellumorB", "VellumorC"};

struct HivesWithBackups : CHiveBench {
    HivesWithBackups() { AddMachines({kHives[0], kHives[1], kHives[2]}); }

    CBackupsFolder backups;
};

std::string BackupOf(const std::string& hive) { return "MACHINE." + hive + ".bck"; }

}  // namespace

TEST_CASE("a backup that is told to be done holds every hive, whichever call fails") {
    RunWithFaults("backup", [](CFaultRun& run) {
        HivesWithBackups bench;
        std::string folder;
        bool isDone = false;
        int saved = 0;
        run.During([&] {
            EnableBackupPrivilege();
            folder = MakeBackupFolder();
            isDone = !folder.empty() && BackupHives(folder, [&saved] { ++saved; });
        });
        run.Demand(run.HasFault() || isDone, "it was not done");
        if (!isDone) return;
        // An entry of the list that cannot be read is passed over.
        if (!run.IsFaultOf({"RegEnumValueA"})) run.Demand(saved == 3, "a hive is missing");
        for (const char* hive : kHives)
            if (!run.IsFaultOf({"RegEnumValueA"}))
                run.Demand(FileText(folder + "\\" + BackupOf(hive)).find("marker") != std::string::npos,
                           std::string("no backup of ") + hive);
    });
}

TEST_CASE("a restore tells the truth and loses no backup, whichever call fails") {
    RunWithFaults("restore", [](CFaultRun& run) {
        HivesWithBackups bench;
        const std::string folder = CBackupsFolder::AddFolder("2009.05.14.16.03.07");
        const auto textOf = [](const char* hive) { return std::string("new ") + hive; };
        for (const char* hive : kHives) WriteFileText(folder + "\\" + BackupOf(hive), textOf(hive));
        RestoreResult result = RestoreResult::Abandoned;
        run.During([&] { result = RestoreHives(folder); });
        run.Demand(run.HasFault() || result == RestoreResult::Registered, "it was not done");
        for (const char* hive : kHives) {
            const std::string file = folder + "\\MACHINE." + hive;
            run.Demand(FileText(file + ".bck") == textOf(hive) || FileText(file + ".tmp") == textOf(hive),
                       std::string("lost: the backup of ") + hive);
            const std::string inPlace = FileText(bench.hives.FilePath(hive));
            const bool isReplaced = inPlace == textOf(hive);
            run.Demand(isReplaced || inPlace == std::string("old ") + hive, std::string("broken: ") + hive);
            // A search that finds nothing counts as done.
            if (result == RestoreResult::Registered && !run.IsFaultOf({"FindFirstFileA"}))
                run.Demand(isReplaced, std::string("not replaced: ") + hive);
        }
    });
}

TEST_CASE("a compaction that is told to be done has replaced every hive, whichever call fails") {
    RunWithFaults("compaction", [](CFaultRun& run) {
        HivesWithBackups bench;
        bool isDone = false;
        std::vector<CompactedHive> found;
        run.During([&] {
            isDone = DeleteFormerCompaction() && CompactHives();
            found = FindCompactedHives();
        });
        run.Demand(run.HasFault() || (isDone && found.size() == 3), "it was not done");
        for (const char* hive : kHives) {
            const bool isReplaced = FileText(bench.hives.FilePath(hive)).find("marker") != std::string::npos;
            run.Demand(isReplaced || FileText(bench.hives.FilePath(hive)) == std::string("old ") + hive,
                       std::string("broken: ") + hive);
            // An entry of the list that cannot be read is passed over.
            if (isDone && !run.IsFaultOf({"RegEnumValueA"}))
                run.Demand(isReplaced, std::string("not replaced: ") + hive);
        }
    });
}

TEST_CASE("a backup is listed and deleted as told, whichever call fails") {
    RunWithFaults("backup folders", [](CFaultRun& run) {
        const CBackupsFolder backups;
        const std::string folder = CBackupsFolder::AddFolder("old");
        CBackupsFolder::AddFile("old\\a.bck", "a");
        CBackupsFolder::AddFile("old\\b.bck", "b");
        ::SetFileAttributesA((folder + "\\b.bck").c_str(), FILE_ATTRIBUTE_READONLY);
        CBackupsFolder::AddFolder("old\\inner");
        CBackupsFolder::AddFile("old\\inner\\c.bck", "c");
        std::vector<std::string> names;
        bool isDeleted = false;
        run.During([&] {
            names = FindBackups();
            isDeleted = DeleteBackup("old");
            DeleteFolderContents(CBackupsFolder::Path());
        });
        run.Demand(run.HasFault() || (isDeleted && names.size() == 1), "it was not deleted");
        run.Demand(!isDeleted || !Exists(folder), "a deletion was told that was not made");
        ::SetFileAttributesA((folder + "\\b.bck").c_str(), FILE_ATTRIBUTE_NORMAL);
    });
}

TEST_CASE("what is behind a link to a folder stays, whichever call fails") {
    const CScratchFolder scratch;
    const std::string target = scratch.AddFolder("target");
    const std::string kept = scratch.AddFile("target\\kept");
    const std::string folder = scratch.AddFolder("folder");
    const std::string link = scratch.AddFolderLink("folder\\link", target);
    RunWithFaults("folder with a link", [&](CFaultRun& run) {
        WriteFileText(folder + "\\file", "x");
        run.During([&] {
            (void)DeleteFolderTree(folder);
            (void)DeleteFolderTree(link);
            DeleteFolderContents(link);
        });
        run.Demand(Exists(kept), "what is behind a link is gone");
        if (!Exists(kept)) WriteFileText(kept, "x");
    });
}
