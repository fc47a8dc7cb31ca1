#include "registry/key_path_rules.h"

#include <doctest/doctest.h>

#include <iterator>

#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::uint32_t kClassesRoot = 0x80000000;
constexpr std::uint32_t kCurrentUser = 0x80000001;
constexpr std::uint32_t kLocalMachine = 0x80000002;
constexpr std::uint32_t kUsers = 0x80000003;

SplitPath Split(std::string_view path) {
    const CExactBuffer block = CExactBuffer::Unterminated(path);
    return SplitKeyPathText(block.View());
}

/// The root's number; 0 for none, which no predefined key has.
std::uint32_t RootOf(std::string_view path) { return Split(path).root.value_or(0); }

/// The subkey, or "(none)".
std::string SubkeyOf(std::string_view path) { return Split(path).subkey.value_or("(none)"); }

}  // namespace

TEST_CASE("the seven long root names stand for the predefined keys and are searched in this order") {
    struct Row {
        std::string_view name;
        std::uint32_t handle;
    };
    constexpr Row kRows[] = {
        {"HKEY_CLASSES_ROOT", 0x80000000},     {"HKEY_CURRENT_USER", 0x80000001},
        {"HKEY_LOCAL_MACHINE", 0x80000002},    {"HKEY_USERS", 0x80000003},
        {"HKEY_PERFORMANCE_DATA", 0x80000004}, {"HKEY_CURRENT_CONFIG", 0x80000005},
        {"HKEY_DYN_DATA", 0x80000006},
    };
    REQUIRE(std::size(kRootKeyTable) == std::size(kRows));
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        CAPTURE(kRows[i].name);
        CHECK(kRootKeyTable[i].name == kRows[i].name);
        CHECK(kRootKeyTable[i].handle == kRows[i].handle);
        CHECK(RootOf("\\" + std::string(kRows[i].name)) == kRows[i].handle);
        CHECK(RootOf("\\" + std::string(kRows[i].name) + "\\x") == kRows[i].handle);
    }
}

TEST_CASE("a path of the root alone has no subkey, so that opening it opens the root itself") {
    CHECK(RootOf(R"(\HKEY_LOCAL_MACHINE)") == kLocalMachine);
    CHECK_FALSE(Split(R"(\HKEY_LOCAL_MACHINE)").subkey.has_value());
    CHECK_FALSE(Split(R"(\HKEY_CURRENT_USER)").subkey.has_value());
    CHECK_FALSE(Split(R"(\HKEY_USERS)").subkey.has_value());
}

TEST_CASE("everything behind the root's backslash is the subkey") {
    CHECK(SubkeyOf(R"(\HKEY_USERS\a)") == "a");
    CHECK(SubkeyOf(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)") ==
          R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Run)");
    CHECK(SubkeyOf(R"(\HKEY_USERS\a\\b)") == R"(a\\b)");
    CHECK(SubkeyOf("\\HKEY_USERS\\M\xFCller\\\x80\xFF") == "M\xFCller\\\x80\xFF");
    CHECK(SubkeyOf("\\HKEY_USERS\\" + Letters(900)) == Letters(900));
}

TEST_CASE("a backslash behind the root without a name behind it leaves an empty subkey") {
    CHECK(RootOf(R"(\HKEY_USERS\)") == kUsers);
    CHECK(SubkeyOf(R"(\HKEY_USERS\)").empty());
}

TEST_CASE("the root name starts behind the first backslash, wherever that stands") {
    CHECK(RootOf(R"(Computer\HKEY_CLASSES_ROOT\.txt)") == kClassesRoot);
    CHECK(SubkeyOf(R"(Computer\HKEY_CLASSES_ROOT\.txt)") == ".txt");
    // Without a leading backslash the root's own name is taken for the text before the first one.
    CHECK(RootOf(R"(HKEY_USERS\x)") == 0);
    CHECK(RootOf(R"(HKEY_USERS\HKEY_CURRENT_USER\x)") == kCurrentUser);
}

TEST_CASE("a path without any backslash is a root name") {
    CHECK(RootOf("HKEY_USERS") == kUsers);
    CHECK(SubkeyOf("HKEY_USERS") == "(none)");
}

TEST_CASE("a root name that is not exactly one of the seven gives no root") {
    for (const std::string_view path : {
             R"(\HKLM\SOFTWARE)", R"(\HKCU)", R"(\MACHINE\SOFTWARE)",                         // abbreviated
             R"(\hkey_local_machine\x)", R"(\Hkey_Users)", R"(\HKEY_LOCAL_MACHINe\x)",        // letter case
             R"(\HKEY_USER\x)", R"(\HKEY_USERS2\x)", R"(\HKEY_USERS \x)", R"(\ HKEY_USERS)",  // near misses
             R"(\HKEY_CURRENT_USER_LOCAL_SETTINGS\x)",  // newer systems' root
             R"(\\HKEY_USERS)", R"(\\)", R"(\)", "",    // no name
         }) {
        CAPTURE(path);
        CHECK_FALSE(Split(path).root.has_value());
    }
}

TEST_CASE("a child's path is its parent's, a backslash and its name") {
    CHECK(JoinKeyPath(R"(\HKEY_USERS)", "a") == R"(\HKEY_USERS\a)");
    CHECK(JoinKeyPath(R"(\HKEY_USERS\a)", "b c") == R"(\HKEY_USERS\a\b c)");
    CHECK(JoinKeyPath(R"(\HKEY_USERS)", "") == R"(\HKEY_USERS\)");
    CHECK(JoinKeyPath(R"(\HKEY_USERS)", "50%s\xFC") == "\\HKEY_USERS\\50%s\xFC");
    CHECK(JoinKeyPath("\\" + Letters(998), Letters(255, 'b')) ==
          "\\" + Letters(998) + "\\" + Letters(255, 'b'));
}

TEST_CASE("joining reads no further than the two names") {
    const CExactBuffer parent = CExactBuffer::Unterminated(R"(\HKEY_USERS)");
    const CExactBuffer child = CExactBuffer::Unterminated("a");
    CHECK(JoinKeyPath(parent.View(), child.View()) == R"(\HKEY_USERS\a)");
}

TEST_CASE("a write time is shown with four digits for the year and two for the rest") {
    CHECK(WriteTimeText({2009, 3, 5, 7, 8, 9}) == "2009/03/05 07:08:09");
    CHECK(WriteTimeText({2009, 12, 31, 23, 59, 58}) == "2009/12/31 23:59:58");
    CHECK(WriteTimeText({1601, 1, 1, 0, 0, 0}) == "1601/01/01 00:00:00");
    CHECK(WriteTimeText({987, 10, 20, 3, 0, 40}) == "0987/10/20 03:00:40");
    CHECK(WriteTimeText({30827, 11, 22, 13, 14, 15}) == "30827/11/22 13:14:15");
}
