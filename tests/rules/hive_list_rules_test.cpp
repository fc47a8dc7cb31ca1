#include "hives/hive_list_rules.h"

#include <doctest/doctest.h>

#include "tests/rules/exact_buffer.h"

namespace {

std::optional<HiveKey> Parse(std::string_view name) {
    const CExactBuffer block = CExactBuffer::Unterminated(name);
    return ParseHiveName(block.View());
}

std::optional<HiveKey> OfFile(std::string_view name) {
    const CExactBuffer block = CExactBuffer::Unterminated(name);
    return HiveOfBackupFile(block.View());
}

HiveKey Machine(std::string subkey) { return {HiveRoot::LocalMachine, std::move(subkey)}; }
HiveKey User(std::string subkey) { return {HiveRoot::Users, std::move(subkey)}; }

constexpr std::string_view kDevice = R"(\Device\HarddiskVolume1)";

std::string FilePath(std::string_view devicePath, std::string_view device = kDevice) {
    const CExactBuffer block = CExactBuffer::Unterminated(devicePath);
    return DevicePathAsFilePath(block.View(), device, "C:").value_or("(none)");
}

}  // namespace

TEST_CASE("a hive's name in the list leads to its key below one of two roots") {
    CHECK(Parse(R"(\REGISTRY\MACHINE\SOFTWARE)") == Machine("SOFTWARE"));
    CHECK(Parse(R"(\REGISTRY\MACHINE\BCD00000000)") == Machine("BCD00000000"));
    CHECK(Parse(R"(\REGISTRY\USER\S-1-5-19)") == User("S-1-5-19"));
    CHECK(Parse(R"(\REGISTRY\USER\.DEFAULT)") == User(".DEFAULT"));
    CHECK(Parse(R"(\REGISTRY\USER\S-1-5-21-1-2-3-500_Classes)") == User("S-1-5-21-1-2-3-500_Classes"));
}

TEST_CASE("a hive's name may come in any letter case, and its key keeps the spelling") {
    CHECK(Parse(R"(\Registry\Machine\Security)") == Machine("Security"));
    CHECK(Parse(R"(\registry\user\S-1-5-20)") == User("S-1-5-20"));
}

TEST_CASE("a name that leads to neither root, or to the root itself, is no hive's") {
    for (const std::string_view name :
         {R"(\REGISTRY\A\{8a7f2d2c-63f5-4f0c-9d9b-0d6b0a3b1f10})", R"(\REGISTRY\MACHINE)",
          R"(\REGISTRY\MACHINE\)", R"(\REGISTRY\USER)", R"(\REGISTRY\USER\)",
          R"(\REGISTRY\MACHINES\SOFTWARE)", R"(\REGISTRY\USERS\x)", R"(REGISTRY\MACHINE\SOFTWARE)",
          R"( \REGISTRY\MACHINE\SOFTWARE)", R"(\REGISTRY)", R"(\)", ""}) {
        CAPTURE(name);
        CHECK_FALSE(Parse(name).has_value());
    }
}

TEST_CASE("a backup file is named by its hive's root and key") {
    CHECK(BackupFileName(Machine("SOFTWARE")) == "MACHINE.SOFTWARE.bck");
    CHECK(BackupFileName(User("S-1-5-19")) == "USER.S-1-5-19.bck");
    CHECK(BackupFileName(User(".DEFAULT")) == "USER..DEFAULT.bck");
    CHECK(BackupFileName(Machine("a.bck")) == "MACHINE.a.bck.bck");
    CHECK(BackupFileName(Machine("50%s\xFC")) == "MACHINE.50%s\xFC.bck");
    CHECK(BackupFileName(Machine("..")) == "MACHINE....bck");
    CHECK(BackupFileName(Machine(Letters(255))) == "MACHINE." + Letters(255) + ".bck");
}

TEST_CASE("a hive whose name would lead into another folder has no backup file") {
    for (const char* subkey : {R"(a\b)", R"(..\a)", R"(x\..\..\a)", "a/b", "../a", R"(\a)", R"(a\)"}) {
        CAPTURE(subkey);
        CHECK_FALSE(BackupFileName(Machine(subkey)).has_value());
        CHECK_FALSE(BackupFileName(User(subkey)).has_value());
    }
}

TEST_CASE("a backup file's name tells the hive, and every hive's file leads back to it") {
    CHECK(OfFile("MACHINE.SOFTWARE.bck") == Machine("SOFTWARE"));
    CHECK(OfFile("USER.S-1-5-19.bck") == User("S-1-5-19"));
    CHECK(OfFile("machine.software.BCK") == Machine("software"));
    for (const HiveKey& hive : {Machine("a.b.bck"), User(".DEFAULT"), User("USER."), Machine("bck")}) {
        CAPTURE(hive.subkey);
        CHECK(OfFile(BackupFileName(hive).value()) == hive);
    }
}

TEST_CASE("any other file is no hive's") {
    for (const std::string_view name :
         {"MACHINE..bck", "USER..bck", "MACHINE.bck", "SOFTWARE.bck", "MACHINE.a", "x.bck", "MACHINE.a.bckx",
          "MACHINE.a.bc", ".bck", "bck", "", "USERS.a.bck"}) {
        CAPTURE(name);
        CHECK_FALSE(OfFile(name).has_value());
    }
}

TEST_CASE("another ending takes the place of the last one alone") {
    CHECK(WithEnding("MACHINE.SOFTWARE.bck", ".sys") == "MACHINE.SOFTWARE.sys");
    CHECK(WithEnding("USER.a.bck.bck", ".tmp") == "USER.a.bck.tmp");
    CHECK(WithEnding("MACHINE.a.BCK", ".sys") == "MACHINE.a.sys");
}

TEST_CASE("a device path is turned into a path on the drive of that device") {
    CHECK(FilePath(R"(\Device\HarddiskVolume1\WINDOWS\system32\config\SAM)") ==
          R"(C:\WINDOWS\system32\config\SAM)");
    CHECK(FilePath(R"(\device\harddiskvolume1\x)") == R"(C:\x)");
    CHECK(FilePath(R"(\Device\HarddiskVolume1\)") == R"(C:\)");
    CHECK(FilePath(R"(\Device\HarddiskVolume1\\Device\HarddiskVolume1\x)") ==
          R"(C:\\Device\HarddiskVolume1\x)");
    CHECK(FilePath("\\Device\\HarddiskVolume1\\" + Letters(400)) == "C:\\" + Letters(400));
}

TEST_CASE("a file on another device has no path") {
    CHECK(FilePath(R"(\Device\HarddiskVolume2\x)") == "(none)");
    CHECK(FilePath(R"(\Device\HarddiskVolume10\x)") == "(none)");  // begins with volume 1's name
    CHECK(FilePath(R"(\Device\HarddiskVolume1)") == "(none)");
    CHECK(FilePath(R"(\Device\HarddiskVolume)") == "(none)");
    CHECK(FilePath(R"(\??\C:\x)") == "(none)");
    CHECK(FilePath(R"(C:\x)") == "(none)");
    CHECK(FilePath("") == "(none)");
}

TEST_CASE("without a device no file has a path") {
    CHECK(FilePath(R"(\Device\HarddiskVolume1\x)", "") == "(none)");
    CHECK(FilePath("", "") == "(none)");
}
