#include "hives/backup.h"

#include <doctest/doctest.h>

#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

struct Fixture : CHiveBench {
    Fixture() { EnableBackupPrivilege(); }

    /// Runs a backup into a folder of its own.
    bool Backup() {
        steps = 0;
        return BackupHives(folder.Path(), [this] { ++steps; });
    }
    [[nodiscard]] std::vector<std::string> Saved() const { return NamesIn(folder.Path()); }
    [[nodiscard]] std::string SavedText(const char* name) const {
        return FileText(folder.Path() + "\\" + name);
    }

    CScratchFolder folder;
    int steps = 0;
};

using Names = std::vector<std::string>;

}  // namespace

TEST_CASE_FIXTURE(Fixture, "every listed hive that has a file is saved to a file of its own") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddUser("VellumorU");
    hives.AddUser("VellumorU_Classes");
    CHECK(Backup());
    CHECK(steps == 4);
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck", "USER.VellumorU.bck",
                           "USER.VellumorU_Classes.bck"});
    for (const char* name : {"MACHINE.VellumorA.bck", "USER.VellumorU.bck"})
        CHECK_FALSE(SavedText(name).empty());
    CHECK(SavedText("MACHINE.VellumorA.bck").find("of VellumorA") != std::string::npos);
    CHECK(SavedText("USER.VellumorU.bck").find("of VellumorU") != std::string::npos);
}

TEST_CASE_FIXTURE(Fixture, "hives are opened and saved one after another in the order of the list") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddUser("VellumorU");
    std::vector<int> stepsAtSave;
    actions.beforeSave = [&] { stepsAtSave.push_back(steps); };
    CHECK(Backup());
    CHECK(stepsAtSave == std::vector<int>{0, 1, 2});
    CHECK(actions.saves == Names{folder.Path() + "\\MACHINE.VellumorA.bck",
                                 folder.Path() + "\\MACHINE.VellumorB.bck",
                                 folder.Path() + "\\USER.VellumorU.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a hive without a file is neither saved nor counted") {
    AddMachines({"VellumorA", "VellumorC"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", "");
    hives.AddBytes(R"(\REGISTRY\MACHINE\VellumorBB)", REG_SZ, "");
    CHECK(Backup());
    CHECK(steps == 2);
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorC.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a hive on another volume is saved like any other") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorA)", R"(\Device\HarddiskVolume9\hive)");
    CHECK(Backup());
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck"});
}

TEST_CASE_FIXTURE(Fixture, "an entry that does not fit the buffers is passed over") {
    AddMachines({"VellumorA", "VellumorD"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", "\\Device\\" + std::string(300, 'x'));
    hives.AddEntry("\\REGISTRY\\MACHINE\\VellumorC" + std::string(260, 'x'), "\\Device\\x");
    CHECK(Backup());
    CHECK(steps == 2);
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorD.bck"});
}

TEST_CASE_FIXTURE(Fixture, "an entry that just fits the buffers counts") {
    AddMachines({"VellumorA"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorA)", std::string(259, 'x'));
    CHECK(Backup());
    CHECK(steps == 1);
}

TEST_CASE_FIXTURE(Fixture, "the type of an entry does not matter") {
    AddMachines({"VellumorA"});
    hives.AddBytes(R"(\REGISTRY\MACHINE\VellumorA)", REG_DWORD, "abcd");
    CHECK(Backup());
    CHECK(steps == 1);
}

TEST_CASE_FIXTURE(Fixture, "a hive that cannot be opened stops the backup, and what is saved stays") {
    AddMachines({"VellumorA", "VellumorC"});
    hives.AddMissing("VellumorB");
    CHECK_FALSE(Backup());
    CHECK(steps == 1);
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a hive that is neither the machine's nor a user's is passed over") {
    AddMachines({"VellumorB"});
    hives.AddEntry(R"(\REGISTRY\A\{app})", hives.DevicePath("app"));
    CHECK(Backup());
    CHECK(steps == 1);
    CHECK(Saved() == Names{"MACHINE.VellumorB.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a full disk stops the backup at the hive that it meets") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    actions.refusedSave = 2;
    CHECK_FALSE(Backup());
    CHECK(steps == 1);
    CHECK(actions.saves.size() == 2);
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a second backup into the same folder stops at the first file and changes none") {
    AddMachines({"VellumorA", "VellumorB"});
    REQUIRE(Backup());
    const std::string before = SavedText("MACHINE.VellumorA.bck");
    SetText(hives.Key("VellumorA"), "marker", "changed since");
    actions.saves.clear();
    CHECK_FALSE(Backup());
    CHECK(steps == 0);
    CHECK(actions.saves.size() == 1);
    CHECK(SavedText("MACHINE.VellumorA.bck") == before);
}

TEST_CASE_FIXTURE(Fixture, "a name with a backslash is saved nowhere") {
    const std::string inner = folder.AddFolder("inner");
    const CScratchKey withBackslash(HKEY_LOCAL_MACHINE, R"(Vellumor..\..\..\out)");
    const CScratchKey withSlash(HKEY_LOCAL_MACHINE, "Vellumor/..");
    for (const CScratchKey* key : {&withBackslash, &withSlash}) {
        const std::string name = R"(\REGISTRY\MACHINE\)" + key->Subkey();
        CAPTURE(name);
        hives.AddEntry(name, hives.DevicePath("any"));
        CHECK_FALSE(BackupHives(inner, [] {}));
        CHECK(NamesIn(inner).empty());
        CHECK(Saved() == Names{"inner"});
        hives.RemoveEntry(name);
    }
    CHECK(actions.saves.empty());
}

TEST_CASE_FIXTURE(Fixture, "a hive whose access list grants next to nothing is saved all the same") {
    AddMachines({"VellumorA"});
    hives.Restrict("VellumorA", READ_CONTROL | WRITE_DAC);
    CHECK(Backup());
    CHECK(Saved() == Names{"MACHINE.VellumorA.bck"});
}

TEST_CASE_FIXTURE(Fixture, "a folder that does not exist, or no path can name, stops the backup") {
    AddMachines({"VellumorA"});
    CHECK_FALSE(BackupHives(folder.Path() + "\\gone", [] {}));
    CHECK_FALSE(BackupHives("C:\\" + std::string(2000, 'x'), [] {}));
    CHECK_FALSE(Exists(folder.Path() + "\\gone"));
}

TEST_CASE_FIXTURE(Fixture, "without a folder the files go to the root of the current drive") {
    AddMachines({"VellumorA"});
    char before[MAX_PATH];
    REQUIRE(::GetCurrentDirectoryA(sizeof before, before) != 0);
    REQUIRE(::SetCurrentDirectoryA(folder.Path().c_str()) != FALSE);
    CHECK(BackupHives("", [] {}));
    ::SetCurrentDirectoryA(before);
    CHECK(actions.saves == Names{"\\MACHINE.VellumorA.bck"});
    CHECK(Exists("C:\\MACHINE.VellumorA.bck"));
    ::DeleteFileA("C:\\MACHINE.VellumorA.bck");
}

TEST_CASE_FIXTURE(Fixture, "an empty list is a backup without files, and a missing one none at all") {
    CHECK(Backup());
    hives.RemoveList();
    CHECK_FALSE(Backup());
    CHECK(steps == 0);
}

TEST_CASE("saving hives enables the privilege for it and no other") {
    for (const char* privilege : {SE_BACKUP_NAME, SE_RESTORE_NAME, SE_SHUTDOWN_NAME})
        DisablePrivilege(privilege);
    EnableBackupPrivilege();
    CHECK(IsPrivilegeEnabled(SE_BACKUP_NAME));
    CHECK_FALSE(IsPrivilegeEnabled(SE_RESTORE_NAME));
    CHECK_FALSE(IsPrivilegeEnabled(SE_SHUTDOWN_NAME));
}
