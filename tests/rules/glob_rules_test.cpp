#include "console/glob_rules.h"

#include <doctest/doctest.h>

#include <string>

TEST_CASE("a pattern matches whole key paths, in any letter case") {
    const struct {
        const char* pattern;
        const char* keyPath;
        bool matches;
    } rows[] = {
        {R"(\HKEY_USERS\x)", R"(\HKEY_USERS\x)", true},
        {R"(HKEY_USERS\x)", R"(\HKEY_USERS\x)", true},
        {R"(hkey_users\X)", R"(\HKEY_USERS\x)", true},
        {R"(HKEY_USERS)", R"(\HKEY_USERS\x)", false},
        {R"(HKEY_USERS\xy)", R"(\HKEY_USERS\x)", false},
        {R"(HKEY_USERS\*)", R"(\HKEY_USERS\x\y\z)", true},
        {R"(HKEY_USERS\*)", R"(\HKEY_USERS)", false},
        {R"(*\fonts)", R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Fonts)", true},
        {R"(*\fonts)", R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Fonts\x)", false},
        {R"(*soft*fonts*)", R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Fonts\x)", true},
        {R"(*fonts*soft*)", R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Fonts\x)", false},
        {R"(HKEY_USERS\?)", R"(\HKEY_USERS\x)", true},
        {R"(HKEY_USERS\?)", R"(\HKEY_USERS\)", false},
        {R"(HKEY_USERS\?)", R"(\HKEY_USERS\xy)", false},
        {R"(HKEY_USERS\[x])", R"(\HKEY_USERS\x)", false},
        {R"(HKEY_USERS\[x])", R"(\HKEY_USERS\[x])", true},
        {"*", R"(\HKEY_USERS)", true},
        {"**", "", true},
        {"", "", true},
        {"", R"(\HKEY_USERS)", false},
        {"?", "", false},
        {"a*ab", "aab", true},
        {"*ab*abc", "ababababc", true},
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.pattern));
        CAPTURE(std::string(row.keyPath));
        CHECK(KeyMatches(row.pattern, row.keyPath) == row.matches);
    }
}

TEST_CASE("a pattern made of many stars ends in time") {
    std::string pattern;
    for (int star = 0; star < 200; ++star) pattern += "*a";
    CHECK_FALSE(KeyMatches(pattern + "b", std::string(5000, 'a')));
}
