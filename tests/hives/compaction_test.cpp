#include "hives/compaction.h"

#include <doctest/doctest.h>

#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

using Names = std::vector<std::string>;

struct Fixture : CHiveBench {
    [[nodiscard]] std::string TextOf(const std::string& name) const { return FileText(hives.FilePath(name)); }
    [[nodiscard]] Names Files() const { return NamesIn(hives.Folder()); }
    void AddFile(const std::string& name, const std::string& text) const {
        WriteFileText(hives.FilePath(name), text);
    }
    /// A file of any size, of which nothing is written.
    void AddLargeFile(const std::string& name, LONGLONG bytes) const {
        const CUniqueFile file(::CreateFileA(hives.FilePath(name).c_str(), GENERIC_WRITE, 0, nullptr,
                                             CREATE_ALWAYS, 0, nullptr));
        LARGE_INTEGER end;
        end.QuadPart = bytes;
        REQUIRE(::SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) != FALSE);
        REQUIRE(::SetEndOfFile(file.Get()) != FALSE);
    }
    [[nodiscard]] CUniqueFile Use(const std::string& name) const {
        return CUniqueFile(::CreateFileA(hives.FilePath(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                         OPEN_EXISTING, 0, nullptr));
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "every hive with a file is saved beside it, copied, and replaced") {
    AddMachines({"VellumorA", "VellumorB"});
    hives.AddUser("VellumorU");
    actions.hiveFiles = hives.Files();
    std::vector<bool> copied;
    actions.beforeReplacement = [&] {
        const std::string file = actions.saves.back();
        const std::string compact = FileText(file);
        copied.push_back(!compact.empty() && FileText(file.substr(0, file.size() - 4) + ".pck") == compact);
    };
    CHECK(CompactHives());
    CHECK(copied == std::vector<bool>{true, true, true});
    CHECK(actions.saves == Names{hives.FilePath("VellumorA.tmp"), hives.FilePath("VellumorB.tmp"),
                                 hives.FilePath("VellumorU.tmp")});
    REQUIRE(actions.replacements.size() == 3);
    CHECK(actions.replacements[2] == CHiveActions::Replacement{R"(\registry\user\vellumoru)",
                                                               hives.FilePath("VellumorU.tmp"),
                                                               hives.FilePath("VellumorU.bak")});
    CHECK(TextOf("VellumorA.bak") == "old VellumorA");
    CHECK(TextOf("VellumorA") == TextOf("VellumorA.pck"));
    CHECK(TextOf("VellumorA").find("of VellumorA") != std::string::npos);
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(Fixture, "the compact file is left for the system to take") {
    AddMachines({"VellumorA"});
    SetSystemActions(nullptr);  // Wine's own replacing, which moves nothing
    CHECK(CompactHives());
    CHECK(Files() == Names{"VellumorA", "VellumorA.pck", "VellumorA.tmp"});
}

TEST_CASE_FIXTURE(Fixture, "a hive without a file is passed over") {
    AddMachines({"VellumorA", "VellumorC"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", "");
    CHECK(CompactHives());
    CHECK(actions.replacements.size() == 2);
}

TEST_CASE_FIXTURE(Fixture, "a hive on another volume stops the compaction where it stands") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    SUBCASE("whatever the other volume's name") {
        hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", R"(\Device\Cdrom0\hive)");
    }
    SUBCASE("also when its name begins like that of Windows' volume") {
        hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorB)", actions.DeviceOfDrive("C:") + R"(0\hive)");
    }
    CHECK_FALSE(CompactHives());
    CHECK(actions.saves == Names{hives.FilePath("VellumorA.tmp")});
    CHECK(Files() == Names{"VellumorA", "VellumorA.bak", "VellumorA.pck", "VellumorB", "VellumorC"});
    CHECK(TextOf("VellumorC") == "old VellumorC");
}

TEST_CASE_FIXTURE(Fixture,
                  "a hive that cannot be opened stops the compaction, and those before stay replaced") {
    AddMachines({"VellumorA", "VellumorC"});
    hives.AddMissing("VellumorB");
    CHECK_FALSE(CompactHives());
    CHECK(actions.replacements.size() == 1);
    CHECK(TextOf("VellumorA.bak") == "old VellumorA");
    CHECK(TextOf("VellumorC") == "old VellumorC");
}

TEST_CASE_FIXTURE(Fixture,
                  "a hive that is neither the machine's nor a user's is passed over, on whatever volume") {
    AddMachines({"VellumorB"});
    hives.AddEntry(R"(\REGISTRY\A\{app})", R"(\Device\Cdrom0\app)");
    CHECK(CompactHives());
    CHECK(actions.replacements.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a failure at any step of a hive stops the compaction there") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    SUBCASE("saving") {
        actions.refusedSave = 2;
        CHECK_FALSE(CompactHives());
        CHECK(Files() == Names{"VellumorA", "VellumorA.bak", "VellumorA.pck", "VellumorB", "VellumorC"});
    }
    SUBCASE("saving, where a file is in the way") {
        AddFile("VellumorB.tmp", "in the way");
        CHECK_FALSE(CompactHives());
        CHECK(TextOf("VellumorB.tmp") == "in the way");
    }
    SUBCASE("copying") {
        ::CreateDirectoryA(hives.FilePath("VellumorB.pck").c_str(), nullptr);
        CHECK_FALSE(CompactHives());
        CHECK(actions.saves.size() == 2);
    }
    SUBCASE("replacing") {
        actions.refusedReplacement = 2;
        CHECK_FALSE(CompactHives());
        CHECK(actions.replacements.size() == 2);
        actions.replacements.pop_back();
    }
    CHECK(actions.replacements.size() == 1);
    CHECK(actions.saves.size() == 2);
    CHECK(TextOf("VellumorB") == "old VellumorB");
}

TEST_CASE_FIXTURE(Fixture, "an old copy is written over") {
    AddMachines({"VellumorA"});
    AddFile("VellumorA.pck", std::string(100'000, 'x'));
    CHECK(CompactHives());
    CHECK(TextOf("VellumorA.pck") == TextOf("VellumorA"));
}

TEST_CASE_FIXTURE(Fixture, "where the drive's device is not known, nothing is touched") {
    AddMachines({"VellumorA"});
    AddFile("VellumorA.tmp", "kept");
    actions.device = "";
    CHECK(DeleteFormerCompaction());
    CHECK_FALSE(CompactHives());
    CHECK(FindCompactedHives().empty());
    CHECK(Files() == Names{"VellumorA", "VellumorA.tmp"});
    CHECK(actions.saves.empty());
}

TEST_CASE_FIXTURE(Fixture, "without a hive list nothing is compacted") {
    hives.RemoveList();
    CHECK(DeleteFormerCompaction());
    CHECK_FALSE(CompactHives());
    CHECK(FindCompactedHives().empty());
}

TEST_CASE_FIXTURE(Fixture, "what a former compaction left is deleted, but for the copies") {
    AddMachines({"VellumorA", "VellumorB", "VellumorD"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorC)", "");
    for (const char* name : {"VellumorA.tmp", "VellumorA.bak", "VellumorA.pck", "VellumorD.bak", "other.tmp",
                             "VellumorC.tmp", ".tmp"})
        AddFile(name, "x");
    CHECK(DeleteFormerCompaction());
    CHECK(Files() == Names{".tmp", "VellumorA", "VellumorA.pck", "VellumorB", "VellumorC.tmp", "VellumorD",
                           "other.tmp"});
}

TEST_CASE_FIXTURE(Fixture, "a file of a former compaction that is in use ends the deleting") {
    AddMachines({"VellumorA", "VellumorB"});
    const char* used = "";
    SUBCASE("a compact file") { used = "VellumorA.tmp"; }
    SUBCASE("the file before") { used = "VellumorA.bak"; }
    AddFile(used, "used");
    AddFile("VellumorB.bak", "not reached");
    const CUniqueFile use = Use(used);
    CHECK_FALSE(DeleteFormerCompaction());
    CHECK(TextOf(used) == "used");
    CHECK(TextOf("VellumorB.bak") == "not reached");
}

TEST_CASE_FIXTURE(Fixture, "a hive on another volume has nothing to be deleted") {
    AddMachines({"VellumorB"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorA)", R"(\Device\Cdrom0\hive)");
    AddFile("VellumorB.bak", "x");
    CHECK(DeleteFormerCompaction());
    CHECK(Files() == Names{"VellumorB"});
}

TEST_CASE_FIXTURE(Fixture, "the compacted hives are those whose file before and whose copy are there") {
    AddMachines({"VellumorA", "VellumorB", "VellumorC"});
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorD)", "");
    hives.AddEntry(R"(\REGISTRY\MACHINE\VellumorE)", R"(\Device\Cdrom0\hive)");
    AddFile("VellumorA.bak", "12345678");
    AddFile("VellumorA.pck", "1234567");
    AddFile("VellumorB.bak", "1");
    AddFile("VellumorC.pck", "1");
    const std::vector<CompactedHive> found = FindCompactedHives();
    REQUIRE(found.size() == 1);
    CHECK(found[0].file == hives.FilePath("VellumorA"));
    CHECK(found[0].bytesBefore == 8);
    CHECK(found[0].bytesAfter == 7);
}

TEST_CASE_FIXTURE(Fixture, "a file's size is told beyond four gigabytes, and while it is in use") {
    AddMachines({"VellumorA"});
    AddLargeFile("VellumorA.bak", 5'000'000'000);
    AddLargeFile("VellumorA.pck", 2'200'000'000);
    const CUniqueFile use = Use("VellumorA.bak");
    const std::vector<CompactedHive> found = FindCompactedHives();
    REQUIRE(found.size() == 1);
    CHECK(found[0].bytesBefore == 5'000'000'000);
    CHECK(found[0].bytesAfter == 2'200'000'000);
}

TEST_CASE_FIXTURE(Fixture, "after a compaction each hive is found with both its sizes") {
    AddMachines({"VellumorA", "VellumorB"});
    REQUIRE(CompactHives());
    const std::vector<CompactedHive> found = FindCompactedHives();
    REQUIRE(found.size() == 2);
    CHECK(found[1].bytesBefore == std::string("old VellumorB").size());
    CHECK(found[1].bytesAfter == TextOf("VellumorB").size());
}

TEST_CASE_FIXTURE(Fixture, "a compaction enables the privileges to replace hives and to restart") {
    constexpr const char* kPrivileges[] = {SE_SHUTDOWN_NAME, SE_BACKUP_NAME, SE_RESTORE_NAME};
    for (const char* privilege : kPrivileges) DisablePrivilege(privilege);
    (void)CompactHives();
    for (const char* privilege : kPrivileges) CHECK(IsPrivilegeEnabled(privilege));
}
