#include "hives/restore.h"

#include <doctest/doctest.h>

#include "hives/backup.h"
#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

using Names = std::vector<std::string>;

constexpr char kBackup[] = "2009.05.14.16.03.07";

/// A backup folder beside the program, and planted hives that it is restored to.
struct Fixture : CHiveBench {
    Fixture() : folder(CBackupsFolder::AddFolder(kBackup)) {}

    /// Puts a file into the backup, with "new <name>" in it.
    void AddFile(const std::string& name) const { WriteFileText(folder + "\\" + name, "new " + name); }
    [[nodiscard]] std::string TextOf(const std::string& name) const { return FileText(folder + "\\" + name); }
    [[nodiscard]] RestoreResult Restore() const { return RestoreHives(folder); }
    [[nodiscard]] static std::string Replaced(const std::string& name) {
        return CBackupsFolder::Path() + "\\System\\" + name;
    }

    CBackupsFolder backups;
    std::string folder;
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "each file of the backup becomes its hive's, and the backup is whole again") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddUser("VellumorU");
    actions.hiveFiles = hives.Files();
    for (const char* name : {"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "USER.VellumorU.bck"})
        AddFile(name);
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(actions.replacements.size() == 3);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new MACHINE.VellumorA.bck");
    CHECK(FileText(hives.FilePath("VellumorB")) == "new MACHINE.VellumorB.bck");
    CHECK(FileText(hives.FilePath("VellumorU")) == "new USER.VellumorU.bck");
    CHECK(FileText(Replaced("MACHINE.VellumorA.sys")) == "old VellumorA");
    CHECK(FileText(Replaced("USER.VellumorU.sys")) == "old VellumorU");
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "USER.VellumorU.bck"});
    CHECK(TextOf("MACHINE.VellumorA.bck") == "new MACHINE.VellumorA.bck");
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "a hive is replaced from the backup file itself, while a copy of it stands by") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    bool copied = false;
    actions.beforeReplacement = [&] {
        copied = TextOf("MACHINE.VellumorA.tmp") == "new MACHINE.VellumorA.bck";
    };
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(copied);
    REQUIRE(actions.replacements.size() == 1);
    CHECK(actions.replacements[0] == CHiveActions::Replacement{R"(\registry\machine\vellumora)",
                                                               folder + "\\MACHINE.VellumorA.bck",
                                                               Replaced("MACHINE.VellumorA.sys")});
}

TEST_CASE_FIXTURE(Fixture, "a hive that is refused ends the restore, and those before it stay registered") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    for (const char* name : {"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "MACHINE.VellumorC.bck"})
        AddFile(name);
    actions.refusedReplacement = 2;
    RestoreResult expected{};
    SUBCASE("access denied: the system has to be restarted first") { expected = RestoreResult::InUse; }
    SUBCASE("any other failure") {
        actions.replaceAnswer = ERROR_BADDB;
        expected = RestoreResult::NotReplaced;
    }
    CHECK(Restore() == expected);
    CHECK(actions.replacements.size() == 2);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new MACHINE.VellumorA.bck");
    CHECK(FileText(hives.FilePath("VellumorB")) == "old VellumorB");
    CHECK(FileText(hives.FilePath("VellumorC")) == "old VellumorC");
    CHECK(NamesIn(folder) ==
          Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "MACHINE.VellumorC.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a file that a former restore replaced makes room for the new one") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    CBackupsFolder::AddFolder("System");
    const std::string replaced = CBackupsFolder::AddFile("System\\MACHINE.VellumorA.sys", "of long ago");
    const std::string other = CBackupsFolder::AddFile("System\\MACHINE.VellumorB.sys", "another hive's");
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(FileText(replaced) == "old VellumorA");
    CHECK(FileText(other) == "another hive's");
}

TEST_CASE_FIXTURE(Fixture, "a replaced file that is still in use ends the restore before it is asked for") {
    AddMachines({"VellumorA", "VellumorB"});
    AddFile("MACHINE.VellumorA.bck");
    AddFile("MACHINE.VellumorB.bck");
    CBackupsFolder::AddFolder("System");
    const std::string replaced = CBackupsFolder::AddFile("System\\MACHINE.VellumorB.sys", "in use");
    const CUniqueFile use(
        ::CreateFileA(replaced.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    CHECK(Restore() == RestoreResult::InUse);
    CHECK(actions.replacements.size() == 1);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new MACHINE.VellumorA.bck");
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a file of a hive that is not loaded ends the restore without a word") {
    AddMachines({"VellumorA", "VellumorC"});
    for (const char* name : {"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "MACHINE.VellumorC.bck"})
        AddFile(name);
    CHECK(Restore() == RestoreResult::Abandoned);
    CHECK(actions.replacements.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a file that is named by no hive ends the restore without a word") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    AddFile("A.bck");
    CHECK(Restore() == RestoreResult::Abandoned);
    CHECK(TextOf("A.bck") == "new A.bck");
}

TEST_CASE_FIXTURE(Fixture, "files with other endings are left alone") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.txt");
    AddFile("MACHINE.VellumorA.bck");
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(actions.replacements.size() == 1);
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorA.txt"});
}

TEST_CASE_FIXTURE(Fixture, "a copy that a broken restore left is written anew and goes") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    AddFile("MACHINE.VellumorA.tmp");
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new MACHINE.VellumorA.bck");
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck"});
    CHECK(TextOf("MACHINE.VellumorA.bck") == "new MACHINE.VellumorA.bck");
}

TEST_CASE_FIXTURE(Fixture, "no hive is replaced from a backup file that cannot be copied first") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    ::CreateDirectoryA((folder + "\\MACHINE.VellumorA.tmp").c_str(), nullptr);
    CHECK(Restore() == RestoreResult::NotReplaced);
    CHECK(actions.replacements.empty());
    CHECK(TextOf("MACHINE.VellumorA.bck") == "new MACHINE.VellumorA.bck");
}

TEST_CASE_FIXTURE(Fixture, "when the backup file cannot be put back, its copy stays") {
    AddMachines({"VellumorA"});
    AddFile("MACHINE.VellumorA.bck");
    struct CBlocking : CHiveActions {
        LSTATUS ReplaceHive(HKEY hive, const char* newFile, const char* oldFile) override {
            const LSTATUS result = CHiveActions::ReplaceHive(hive, newFile, oldFile);
            ::CreateDirectoryA(newFile, nullptr);
            return result;
        }
    } blocking;
    blocking.hiveFiles = hives.Files();
    SetSystemActions(&blocking);
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(TextOf("MACHINE.VellumorA.tmp") == "new MACHINE.VellumorA.bck");
}

TEST_CASE_FIXTURE(Fixture, "a folder without backup files, or none at all, restores nothing and goes well") {
    AddMachines({"VellumorA"});
    CHECK(Restore() == RestoreResult::Registered);
    AddFile("readme.txt");
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(RestoreHives(folder + "\\gone") == RestoreResult::Registered);
    CHECK(actions.replacements.empty());
    CHECK(FileText(hives.FilePath("VellumorA")) == "old VellumorA");
}

TEST_CASE_FIXTURE(Fixture, "what a backup saved is what a restore registers") {
    AddMachines({"VellumorA"});
    hives.AddUser("VellumorU");
    actions.hiveFiles = hives.Files();
    EnableBackupPrivilege();
    REQUIRE(BackupHives(folder, [] {}));
    const std::string saved = TextOf("MACHINE.VellumorA.bck");
    REQUIRE_FALSE(saved.empty());
    CHECK(Restore() == RestoreResult::Registered);
    CHECK(FileText(hives.FilePath("VellumorA")) == saved);
    CHECK(TextOf("MACHINE.VellumorA.bck") == saved);
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck", "USER.VellumorU.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a restore enables the privileges to replace hives and to restart") {
    constexpr const char* kPrivileges[] = {SE_SHUTDOWN_NAME, SE_BACKUP_NAME, SE_RESTORE_NAME};
    for (const char* privilege : kPrivileges) DisablePrivilege(privilege);
    (void)Restore();
    for (const char* privilege : kPrivileges) CHECK(IsPrivilegeEnabled(privilege));
}
