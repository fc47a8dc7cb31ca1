#include "console/text_table_rules.h"

#include <doctest/doctest.h>

#include <string>

TEST_CASE("control characters become visible, everything else stays") {
    CHECK(Printable("a\\x41 b") == "a\\x41 b");
    CHECK(Printable("\x1B[2J") == "\\x1B[2J");
    CHECK(Printable("a\r\nb\t\x7F") == "a\\x0D\\x0Ab\\x09\\x7F");
    CHECK(Printable(std::string_view("\0", 1)) == "\\x00");
    CHECK(Printable("\xC2\x80\xC2\x9F\xC2\xA0\xC3\xA4") == "\\x80\\x9F\xC2\xA0\xC3\xA4");
    CHECK(Printable("\xC2") == "\xC2");
}

TEST_CASE("characters are counted, not bytes") {
    CHECK(CountCharacters("") == 0);
    CHECK(CountCharacters("abc") == 3);
    CHECK(CountCharacters("\xC3\xA4\xE2\x82\xAC") == 2);
}

TEST_CASE("a text that is too long loses its middle") {
    const struct {
        const char* text;
        std::size_t limit;
        const char* shortened;
    } rows[] = {
        {"abcdefghij", 10, "abcdefghij"},
        {"abcdefghij", 9, "abc...hij"},
        {"abcdefghij", 8, "abc...ij"},
        {"abcdefghij", 4, "a..."},
        {"abcdefghij", 3, "abc"},
        {"abcdefghij", 0, ""},
        {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 6, "\xC3\xA4\xC3\xA4...\xC3\xA4"},
        {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 2, "\xC3\xA4\xC3\xA4"},
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.text));
        CAPTURE(row.limit);
        CHECK(Shortened(row.text, row.limit) == row.shortened);
    }
}

TEST_CASE("a table's columns are as wide as their longest cell") {
    CHECK(TextTable({}, kAnyWidth).empty());
    CHECK(TextTable({{"A", "B", "C"}, {"one", "", "x"}, {"", "three", ""}}, kAnyWidth) ==
          "A    B      C\n"
          "one         x\n"
          "     three\n");
    CHECK(TextTable({{"\xC3\xA4", "b"}, {"cc", "d"}}, kAnyWidth) == "\xC3\xA4   b\ncc  d\n");
}

TEST_CASE("a table that is too wide has its widest columns cut to one width") {
    const std::vector<std::vector<std::string>> lines{{"ab", "0123456789abcdef", "0123456789"}};
    CHECK(TextTable(lines, 32) == "ab  0123456789abcdef  0123456789\n");
    CHECK(TextTable(lines, 31) == "ab  012345...abcdef  0123456789\n");
    CHECK(TextTable(lines, 24) == "ab  012...def  012...789\n");
    // However little room there is, every column shows something.
    CHECK(TextTable(lines, 0) == "ab  0...  0...\n");
}
