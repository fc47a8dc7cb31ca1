#include "repair/branch_list_rules.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "registry/letter_case_rules.h"

namespace {

std::string InCapitals(std::string_view text) {
    std::string capitals(text);
    std::ranges::transform(capitals, capitals.begin(), UpperCase);
    return capitals;
}

CBranchList Listed(std::string_view companionText) {
    CBranchList branches(InCapitals);
    CHECK(branches.Read(companionText));
    return branches;
}

bool IsRead(std::string_view companionText) { return CBranchList(InCapitals).Read(companionText); }

}  // namespace

TEST_CASE("a branch of printable letters is its own line") {
    CHECK(BranchLine(R"(HKEY_USERS\a b\{c}[d]"e";~)") == "HKEY_USERS\\a b\\{c}[d]\"e\";~\r\n");
}

TEST_CASE("what could end or disguise a line is escaped, and so is the percent sign") {
    CHECK(BranchLine("a\r\nb\t%\x7F\x80\xE4\xFF") == "a%0D%0Ab%09%25%7F%80%E4%FF\r\n");
    CHECK(BranchLine("]\n[HKEY_LOCAL_MACHINE") == "]%0A[HKEY_LOCAL_MACHINE\r\n");
}

TEST_CASE("a branch of any bytes comes back from its line, and no two have the same one") {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string branch(1, static_cast<char>(byte));
        const std::string line = BranchLine(branch);
        CHECK(BranchOfLine(std::string_view(line).substr(0, line.size() - 2)) == branch);
        all += branch;
    }
    const std::string line = BranchLine(all);
    CHECK(line.find_first_of("\r\n") == line.size() - 2);
    CHECK(BranchOfLine(std::string_view(line).substr(0, line.size() - 2)) == all);
}

TEST_CASE("a line that no branch is written as has no branch") {
    for (const char* line : {"", "%", "a%", "a%0", "%0a", "%g0", "%41", "%20", "a\tb", "a\rb", "\x80", "% 1"})
        CHECK_FALSE(BranchOfLine(line).has_value());
    CHECK(BranchOfLine("%0A") == "\n");
    CHECK(BranchOfLine("%25") == "%");
}

TEST_CASE("a branch holds itself and the keys below it, and no others") {
    const CBranchList branches = Listed("HKEY_USERS\\a\\b\r\nHKEY_USERS\\c%0A]\r\n");
    for (const char* path : {R"(HKEY_USERS\a\b)", R"(HKEY_USERS\a\b\c)", R"(HKEY_USERS\a\b\c]\d)",
                             "HKEY_USERS\\c\n]", "HKEY_USERS\\c\n]\\below"})
        CHECK(branches.Holds(path));
    for (const char* path :
         {"", R"(HKEY_USERS)", R"(HKEY_USERS\a)", R"(HKEY_USERS\a\bb)", R"(HKEY_USERS\a\b c)",
          R"(-HKEY_USERS\a\b)", R"( HKEY_USERS\a\b)", R"(x\HKEY_USERS\a\b)", R"(HKEY_USERS\c)"})
        CHECK_FALSE(branches.Holds(path));
}

TEST_CASE("a root that is listed holds all of its keys") {
    CHECK(Listed("HKEY_CURRENT_USER\r\n").Holds(R"(HKEY_CURRENT_USER\Software)"));
    CHECK_FALSE(Listed("HKEY_CURRENT_USER\r\n").Holds("HKEY_CURRENT_USER2"));
}

TEST_CASE("letter case is ignored as the caller says") {
    CBranchList exact([](std::string_view text) { return std::string(text); });
    CHECK(exact.Read("HKEY_USERS\\Soft\r\n"));
    CHECK(Listed("HKEY_USERS\\Soft\r\n").Holds(R"(hkey_users\sOFT\x)"));
    CHECK(exact.Holds(R"(HKEY_USERS\Soft\x)"));
    CHECK_FALSE(exact.Holds(R"(HKEY_USERS\soft\x)"));
}

TEST_CASE("a companion with a line of another form is not read") {
    CHECK(IsRead(""));
    CHECK(IsRead("a\r\nb\r\n"));
    for (const char* text : {"\r\n", "a\r\n\r\n", "a\n\r\n", "%41\r\n", "a\r\n\tb\r\n"})
        CHECK_FALSE(IsRead(text));
}

TEST_CASE("a last line that was cut short lists nothing") {
    const CBranchList branches = Listed("HKEY_USERS\\a\r\nHKEY_LOCAL_MACHINE");
    CHECK(branches.Holds(R"(HKEY_USERS\a)"));
    CHECK_FALSE(branches.Holds("HKEY_LOCAL_MACHINE"));
    CHECK_FALSE(Listed("HKEY_USERS\r").Holds("HKEY_USERS"));
    CHECK_FALSE(Listed("HKEY_USERS\\a%0").Holds("HKEY_USERS\\a"));
}
