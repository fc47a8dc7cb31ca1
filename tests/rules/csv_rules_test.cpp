#include "console/csv_rules.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::vector<std::string>>;

std::string Line(const std::vector<std::string>& fields) { return CsvLine(fields); }

}  // namespace

TEST_CASE("a line of fields ends with CR and LF, and only fields that need it are quoted") {
    CHECK(Line({"a", "b"}) == "a,b\r\n");
    CHECK(Line({"", ""}) == ",\r\n");
    CHECK(Line({"a b;c\td"}) == "a b;c\td\r\n");
    CHECK(Line({"a,b", "c"}) == "\"a,b\",c\r\n");
    CHECK(Line({"say \"x\""}) == "\"say \"\"x\"\"\"\r\n");
    CHECK(Line({"one\r\ntwo", "x\ny", "x\ry"}) == "\"one\r\ntwo\",\"x\ny\",\"x\ry\"\r\n");
}

TEST_CASE("lines are taken apart into their fields") {
    const struct {
        const char* text;
        Lines lines;
    } rows[] = {
        {"", {}},
        {"a,b\r\nc,d\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a,b\nc,d\n", {{"a", "b"}, {"c", "d"}}},
        {"a,b", {{"a", "b"}}},
        {",\r\n", {{"", ""}}},
        {"\r\n", {{""}}},
        {"\"a,b\",c\r\n", {{"a,b", "c"}}},
        {"\"say \"\"x\"\"\"\r\n", {{"say \"x\""}}},
        {R"("","")", {{"", ""}}},
        {"\"one\r\ntwo\"\r\nb\r\n", {{"one\r\ntwo"}, {"b"}}},
        {"a\"b,c\r\n", {{"a\"b", "c"}}},
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.text));
        CHECK(ParseCsv(row.text) == row.lines);
    }
}

TEST_CASE("a quoted field that does not end where it should makes the whole text unreadable") {
    for (const char* text : {"\"a", "a,\"b\r\n", "\"a\"b\r\n", "\"a\" ,b", "x\r\n\"a\"\""}) {
        CAPTURE(std::string(text));
        CHECK_FALSE(ParseCsv(text).has_value());
    }
}

TEST_CASE("whatever stands in fields comes back as it was") {
    std::string every;
    for (int byte = 1; byte < 256; ++byte) every += static_cast<char>(byte);
    const std::vector<std::string> fields{every, "", "\"", ",", "\r\n", "\"\"", "plain"};
    CHECK(ParseCsv(CsvLine(fields) + CsvLine(fields)) == Lines{fields, fields});
}
