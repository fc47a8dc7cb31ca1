#include "repair/export_text_rules.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "tests/rules/memory_sink.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

std::string Value(std::string_view name, std::uint32_t type, const Bytes& data) {
    return Written([&](CExportText& text) { text.WriteValue(name, type, data); });
}

std::string Hex(const Bytes& data, std::uint32_t type) {
    return Written([&](CExportText& text) { text.WriteHexData(data, type); });
}

std::string HexNumber(std::uint32_t value, bool keepLeadingZeros) {
    return Written([&](CExportText& text) { text.WriteHexNumber(value, keepLeadingZeros); });
}

std::string Quoted(std::string_view text) {
    return Written([&](CExportText& out) { out.WriteQuoted(text); });
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    lines.push_back(text.substr(start));
    return lines;
}

}  // namespace

TEST_CASE("the header is one line and a blank one") {
    CHECK(Written([](CExportText& text) { text.WriteHeader(); }) ==
          "Windows Registry Editor Version 5.00\r\n\r\n");
}

TEST_CASE("a key line holds the path between brackets, as it is") {
    CHECK(Written([](CExportText& text) { text.WriteKeyLine(R"(HKEY_USERS\a"b\[c])"); }) ==
          "[HKEY_USERS\\a\"b\\[c]]\r\n");
}

TEST_CASE("quoted text escapes double quotes and backslashes and nothing else") {
    CHECK(Quoted("") == R"("")");
    CHECK(Quoted("plain") == R"("plain")");
    CHECK(Quoted(R"(a"b\c)") == R"("a\"b\\c")");
    CHECK(Quoted("tab\there") == "\"tab\there\"");
    CHECK(Quoted("\x80\xFF'%") == "\"\x80\xFF'%\"");
}

TEST_CASE("line feeds inside of data come out as carriage return and line feed") {
    CHECK(Quoted("a\nb") == "\"a\r\nb\"");
    CHECK(Quoted("a\r\nb") == "\"a\r\r\nb\"");
    CHECK(Quoted("\n\n") == "\"\r\n\r\n\"");
}

TEST_CASE("the name of a value is quoted, and the default value's is an at sign") {
    CHECK(Value("", 1, BytesOf("x")) == "@=\"x\"\r\n");
    CHECK(Value("n", 1, BytesOf("x")) == "\"n\"=\"x\"\r\n");
    CHECK(Value(R"(a"b\c)", 1, BytesOf("x")) == "\"a\\\"b\\\\c\"=\"x\"\r\n");
}

TEST_CASE("text data end at their first zero byte, and expandable text comes out as plain text") {
    const std::string_view zeros("one\0two\0", 8);
    for (const std::uint32_t type : {1u, 2u}) {
        CHECK(Value("n", type, BytesOf(zeros)) == "\"n\"=\"one\"\r\n");
        CHECK(Value("n", type, BytesOf("unended")) == "\"n\"=\"unended\"\r\n");
        CHECK(Value("n", type, {}) == "\"n\"=\"\"\r\n");
    }
    CHECK(Value("n", 2, BytesOf(R"(%SystemRoot%\x)")) == "\"n\"=\"%SystemRoot%\\\\x\"\r\n");
}

TEST_CASE("a number of four bytes is written most significant digit first, with all eight digits") {
    CHECK(Value("n", 4, {0, 0, 0, 0}) == "\"n\"=dword:00000000\r\n");
    CHECK(Value("n", 4, {26, 0, 0, 0}) == "\"n\"=dword:0000001a\r\n");
    CHECK(Value("n", 4, {0x78, 0x56, 0x34, 0x12}) == "\"n\"=dword:12345678\r\n");
    CHECK(Value("n", 4, {0xEF, 0xBE, 0xAD, 0xDE}) == "\"n\"=dword:deadbeef\r\n");
}

TEST_CASE("a number of another length is written as bytes") {
    CHECK(Value("n", 4, {}) == "\"n\"=hex(4):\r\n");
    CHECK(Value("n", 4, {1, 2, 3}) == "\"n\"=hex(4):01,02,03\r\n");
    CHECK(Value("n", 4, {1, 2, 3, 4, 5}) == "\"n\"=hex(4):01,02,03,04,05\r\n");
}

TEST_CASE("every other type is written as bytes with the type's number in hexadecimal") {
    struct Row {
        std::uint32_t type;
        const char* opening;
    };
    constexpr Row kRows[] = {{0, "hex(0):"},
                             {3, "hex:"},
                             {5, "hex(5):"},
                             {6, "hex(6):"},
                             {7, "hex(7):"},
                             {8, "hex(8):"},
                             {9, "hex(9):"},
                             {10, "hex(a):"},
                             {11, "hex(b):"},
                             {16, "hex(10):"},
                             {0xFFFFFFFF, "hex(ffffffff):"}};
    for (const Row& row : kRows) {
        CHECK(Value("n", row.type, {0x0A, 0xFF}) == std::string("\"n\"=") + row.opening + "0a,ff\r\n");
        CHECK(Value("n", row.type, {}) == std::string("\"n\"=") + row.opening + "\r\n");
    }
}

TEST_CASE("a hexadecimal number drops its leading zeros unless told to keep them") {
    CHECK(HexNumber(0, false) == "0");
    CHECK(HexNumber(0, true) == "00000000");
    CHECK(HexNumber(0xABC, false) == "abc");
    CHECK(HexNumber(0xABC, true) == "00000abc");
    CHECK(HexNumber(0x10000000, false) == "10000000");
    CHECK(HexNumber(0xF00, false) == "f00");
}

TEST_CASE("forty bytes under a short name break into lines of at most 80 columns") {
    const std::string text = Value("n", 3, Bytes(40, 0x5A));
    // 8 columns of opening and 23 bytes reach column 76, where the line breaks.
    const std::vector<std::string> lines = Lines(text);
    REQUIRE(lines.size() == 3);
    CHECK(lines[0].size() <= 80);
    CHECK(lines[0].ends_with("5a,\\"));
    CHECK(lines[1].starts_with("  5a,5a"));
    CHECK(lines[1].ends_with("5a"));
    CHECK(std::ranges::count(text, 'a') == 40);
    CHECK(lines[2].empty());
}

TEST_CASE("a line breaks where the next byte would start at column 76 or behind") {
    const Bytes data(60, 0x11);
    for (std::size_t length = 0; length <= 90; ++length) {
        const std::string text = Value(std::string(length + 1, 'n'), 3, data);
        const std::vector<std::string> lines = Lines(text);
        const std::size_t opening = length + 1 + 7;  // quotes, equals sign, "hex:"
        // Two digits each, a comma between; the first byte of a line stands wherever the line is.
        std::size_t column = opening;
        std::size_t bytes = 0;
        do {
            column += bytes == 0 ? 2 : 3;
            ++bytes;
        } while (column < 76);
        CHECK(lines[0].size() == column + 2);
        if (opening < 76) CHECK(lines[0].size() <= 80);
        for (std::size_t line = 1; line + 2 < lines.size(); ++line) CHECK(lines[line].size() == 78);
    }
}

TEST_CASE("continuation lines hold 25 bytes behind two spaces") {
    const std::vector<std::string> lines = Lines(Value("name", 7, Bytes(100, 0)));
    REQUIRE(lines.size() > 3);
    std::string full = "  00";
    for (int byte = 1; byte < 25; ++byte) full += ",00";
    CHECK(lines[1] == full + ",\\");
    CHECK(lines[2] == full + ",\\");
}

TEST_CASE("the column counts from the last line feed, one in the value's name too") {
    // The name ends with a line feed, so the quote behind it is the line's first column.
    const std::vector<std::string> lines = Lines(Value(std::string(70, 'n') + "\n", 3, Bytes(30, 0)));
    REQUIRE(lines.size() >= 3);
    CHECK(lines[1].starts_with("\"=hex:00,"));
    CHECK(lines[1].size() == 6 + 2 + 3 * 23 + 2);
}

TEST_CASE("every byte value has its two lower-case digits") {
    for (unsigned value = 0; value < 256; ++value) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        const std::string expected{kDigits[value / 16], kDigits[value % 16]};
        CHECK(Hex({static_cast<unsigned char>(value)}, 3) == "hex:" + expected);
    }
}

TEST_CASE("output is handed on in blocks of 4096 bytes and the rest by a flush") {
    CMemorySink sink;
    CExportText text(sink);
    text.WriteLiteral(std::string(4095, 'x'));
    CHECK(sink.blocks.empty());
    text.PutByte('y');
    REQUIRE(sink.blocks.size() == 1);
    CHECK(sink.blocks[0] == std::string(4095, 'x') + "y");
    text.FlushOutput();
    CHECK(sink.offers == 1);  // nothing was left
    text.PutByte('z');
    text.FlushOutput();
    CHECK(sink.blocks.back() == "z");
}

TEST_CASE("a line end across two blocks is whole") {
    CMemorySink sink;
    CExportText text(sink);
    text.WriteLiteral(std::string(4095, 'x'));
    text.PutByte('\n');
    text.FlushOutput();
    REQUIRE(sink.blocks.size() == 2);
    CHECK(sink.blocks[0].back() == '\r');
    CHECK(sink.blocks[1] == "\n");
}

TEST_CASE("what a full disk refuses is kept, and what finds no room is dropped") {
    CMemorySink sink;
    CExportText text(sink);
    sink.refuses = true;
    text.WriteLiteral(std::string(4096, 'x') + std::string(10'000, 'y'));
    CHECK(sink.blocks.empty());
    sink.refuses = false;
    text.FlushOutput();
    REQUIRE(sink.blocks.size() == 1);
    CHECK(sink.blocks[0] == std::string(4096, 'x'));
    text.PutByte('z');
    text.FlushOutput();
    CHECK(sink.blocks.back() == "z");
}
