#include "repair/entry_rules.h"

#include <doctest/doctest.h>

TEST_CASE("an entry about a value has the value's name behind a backslash, in double quotes") {
    CHECK(EntryText(R"(\HKEY_USERS\a)", "b") == R"(\HKEY_USERS\a\"b")");
    CHECK(EntryText(R"(\HKEY_USERS\a)", "") == R"(\HKEY_USERS\a)");
    CHECK(EntryText(R"(\HKEY_USERS\a)", R"(c:\x)") == R"(\HKEY_USERS\a\"c:\x")");
}

TEST_CASE("a key entry gives root and subkey path") {
    const auto entry = ParseEntry(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\a b)");
    REQUIRE(entry.has_value());
    CHECK(entry->root == 0x80000002);
    CHECK(entry->rootName == "HKEY_LOCAL_MACHINE");
    CHECK(entry->subkeyPath == R"(SOFTWARE\a b)");
    CHECK_FALSE(entry->valueName.has_value());
}

TEST_CASE("a value entry gives the value's name, too") {
    const auto entry = ParseEntry(R"(\HKEY_CURRENT_USER\Software\x\"Path to it")");
    REQUIRE(entry.has_value());
    CHECK(entry->subkeyPath == R"(Software\x)");
    CHECK(entry->valueName == "Path to it");
}

TEST_CASE("all seven roots are known, ignoring letter case, and keep their spelling") {
    struct Row {
        const char* text;
        std::uint32_t root;
    };
    constexpr Row kRows[] = {
        {R"(\HKEY_CLASSES_ROOT\x)", 0x80000000},     {R"(\HKEY_CURRENT_USER\x)", 0x80000001},
        {R"(\HKEY_LOCAL_MACHINE\x)", 0x80000002},    {R"(\HKEY_USERS\x)", 0x80000003},
        {R"(\HKEY_PERFORMANCE_DATA\x)", 0x80000004}, {R"(\HKEY_CURRENT_CONFIG\x)", 0x80000005},
        {R"(\HKEY_DYN_DATA\x)", 0x80000006},         {R"(\hkey_users\x)", 0x80000003},
        {R"(\Hkey_Current_User\x)", 0x80000001}};
    for (const Row& row : kRows) {
        const auto entry = ParseEntry(row.text);
        REQUIRE(entry.has_value());
        CHECK(entry->root == row.root);
        CHECK("\\" + entry->rootName + "\\x" == row.text);
    }
}

TEST_CASE("what names no key below a known root is no entry") {
    for (const char* text : {"", R"(HKEY_USERS\a)", R"(\HKEY_USERS)", R"(\HKCU\a)", R"(\HKEY_USERSX\a)",
                             R"(\HKEY_USER\a)", R"(\\HKEY_USERS\a)", R"(\)", R"(\\)", R"( \HKEY_USERS\a)"})
        CHECK_FALSE(ParseEntry(text).has_value());
}

TEST_CASE("a value of a root itself is found") {
    const auto entry = ParseEntry(R"(\HKEY_CURRENT_USER\"x")");
    REQUIRE(entry.has_value());
    CHECK(entry->subkeyPath.empty());
    CHECK(entry->valueName == "x");
}

TEST_CASE("a value name ends at its first double quote, or at the end of the text") {
    CHECK(ParseEntry(R"(\HKEY_USERS\a\"b"c")")->valueName == "b");
    CHECK(ParseEntry(R"(\HKEY_USERS\a\"b)")->valueName == "b");
    CHECK(ParseEntry(R"(\HKEY_USERS\a\"")")->valueName == "");
    CHECK(ParseEntry(R"(\HKEY_USERS\a\")")->valueName == "");
}

TEST_CASE("the first backslash with a double quote behind it opens the value's name") {
    const auto entry = ParseEntry(R"(\HKEY_USERS\a\"b\"c")");
    CHECK(entry->subkeyPath == "a");
    CHECK(entry->valueName == R"(b\)");
    CHECK(ParseEntry(R"(\HKEY_USERS\a"b\c)")->subkeyPath == R"(a"b\c)");
}
