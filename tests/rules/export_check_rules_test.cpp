#include "repair/export_check_rules.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "tests/rules/memory_sink.h"

namespace {

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::string kKey = "[HKEY_USERS\\a]\r\n";

std::string Same(std::string_view text) { return std::string(text); }

bool MayReplay(std::string_view text, std::size_t pieceBytes = std::string_view::npos) {
    CBranchList branches(Same);
    REQUIRE(branches.Read("HKEY_USERS\\a\r\nHKEY_USERS\\odd%0A]\r\n"));
    CExportCheck check(branches);
    for (std::size_t at = 0; at < text.size(); at += std::min(pieceBytes, text.size()))
        check.Feed(text.substr(at, pieceBytes));
    return check.Finish();
}

/// Whether an export of one key with these lines in its block may be replayed.
bool BlockMayReplay(const std::string& lines) { return MayReplay(kHeader + kKey + lines + "\r\n"); }

/// The export of one key with one value.
std::string Export(std::string_view path, std::string_view name, std::string_view data,
                   std::uint32_t type = export_types::kText) {
    const std::vector<unsigned char> bytes(data.begin(), data.end());
    return Written([&](CExportText& text) {
        text.WriteHeader();
        text.WriteKeyLine(path);
        text.WriteValue(name, type, bytes);
        text.WriteBlankLine();
    });
}

bool ValueMayReplay(std::string_view name, std::string_view data) {
    return MayReplay(Export("HKEY_USERS\\a", name, data));
}

}  // namespace

TEST_CASE("an export of listed branches may be replayed") {
    const std::string text = Written([](CExportText& out) {
        const std::vector<unsigned char> bytes(200, 0x5A);
        out.WriteHeader();
        out.WriteKeyLine(R"(HKEY_USERS\a)");
        out.WriteValue("", export_types::kText, bytes);
        out.WriteValue("q\"\\", export_types::kExpandText, {});
        out.WriteValue("n", export_types::kNumber, {bytes.data(), 4});
        for (const std::uint32_t type : {0u, 3u, 4u, 7u, 11u, 16u, 0xFFFFFFFFu}) {
            out.WriteValue("bytes", type, bytes);
            out.WriteValue("none", type, {});
        }
        out.WriteBlankLine();
        out.WriteKeyLine(R"(HKEY_USERS\a\b]"[c;@=-)");
        out.WriteBlankLine();
        out.WriteBlankLine();
        out.WriteKeyLine(R"(HKEY_USERS\a)");
        out.WriteBlankLine();
    });
    CHECK(MayReplay(text));
    for (const std::size_t pieceBytes : {1, 2, 3, 7}) CHECK(MayReplay(text, pieceBytes));
    // Wherever a full disk has cut it.
    for (std::size_t bytes = 0; bytes < text.size(); ++bytes) {
        CAPTURE(bytes);
        CHECK(MayReplay(text.substr(0, bytes)));
    }
}

TEST_CASE("a key outside of the listed branches is not replayed") {
    CHECK(MayReplay(Export(R"(HKEY_USERS\a\b)", "v", "x")));
    for (const char* path : {R"(HKEY_USERS\b)", R"(HKEY_USERS\ab)", "HKEY_USERS", R"(HKEY_LOCAL_MACHINE\a)",
                             R"(-HKEY_USERS\a)", R"( HKEY_USERS\a)", ""})
        CHECK_FALSE(MayReplay(Export(path, "v", "x")));
    CHECK_FALSE(MayReplay(kHeader + "[HKEY_USERS\\b]"));  // at the end of a file that was cut
    CHECK_FALSE(MayReplay(kHeader + "[-HKEY_USERS\\a]"));
}

TEST_CASE("a key name that reads back as a foreign key line is not replayed") {
    for (const char* name :
         {"]\n[HKEY_LOCAL_MACHINE", "]\n\n[HKEY_LOCAL_MACHINE", "]\r[HKEY_LOCAL_MACHINE",
          "]\r\n\r\n[HKEY_LOCAL_MACHINE", "]\n\n[-HKEY_USERS\\a", "]\n\n [HKEY_LOCAL_MACHINE"})
        CHECK_FALSE(MayReplay(Export("HKEY_USERS\\a\\" + std::string(name), "v", "x")));
}

TEST_CASE("a key name that breaks its line is not replayed, even one that is listed") {
    for (const char* path : {"HKEY_USERS\\a\\b\nc", "HKEY_USERS\\a\\b\rc", "HKEY_USERS\\a\\]\n@=-",
                             "HKEY_USERS\\a\\]\n\"v\"=\"x", "HKEY_USERS\\odd\n]"})
        CHECK_FALSE(MayReplay(Export(path, "v", "x")));
}

TEST_CASE("text of several lines may be replayed") {
    for (const char* text : {"one\ntwo", "one\r\ntwo", "\n", "one\n", "\r\n\r\n", "one\rtwo", "a\n\"quoted\"",
                             "a\n\\path\\", "a\nx=y", "a\nb [c]", "a\n=-", "a\n;b"})
        CHECK(ValueMayReplay("v", text));
    CHECK(ValueMayReplay("na\nme", "x"));
    CHECK(ValueMayReplay("na\rme", "a\nb"));
}

TEST_CASE("text of which a line looks like an order to the registry editor is not replayed") {
    for (const char* text :
         {"x\n[HKEY_LOCAL_MACHINE\\b]", "x\r[HKEY_LOCAL_MACHINE\\b]", "x\n\t [HKEY_LOCAL_MACHINE\\b]",
          "x\n\xA0[-HKEY_USERS", "x\n[", "x\n@=-", "x\n @ =dword:00000001", "x\r\n\r\n[b]\r\n"}) {
        CHECK_FALSE(ValueMayReplay("v", text));
        CHECK_FALSE(ValueMayReplay(text, "x"));
    }
    CHECK(ValueMayReplay("v", "[HKEY_LOCAL_MACHINE\\b]\nx"));  // behind the value's name, on its line
}

TEST_CASE("a name whose closing quote begins a line is not replayed") {
    CHECK_FALSE(ValueMayReplay("x\n", "=-;"));
    CHECK_FALSE(ValueMayReplay("x\r \t", "=-;"));
    CHECK(ValueMayReplay("v", "x\n"));
}

TEST_CASE("a line that no export writes is not replayed") {
    CHECK(BlockMayReplay("\"v\"=\"x\"\r\n"));
    for (const char* const line : {R"("v"=-)",
                                   R"(@=-)",
                                   R"("v"="x" )",
                                   R"("v"= "x")",
                                   R"("v" ="x")",
                                   R"( "v"="x")",
                                   R"(v="x")",
                                   R"("v")",
                                   R"("v"=)",
                                   R"(@)",
                                   R"(@ ="x")",
                                   R"(;note)",
                                   R"(# note)",
                                   R"( )",
                                   R"(x)",
                                   R"("v"="\n")",
                                   R"("\v"="x")",
                                   R"("v"=dword:1)",
                                   R"("v"=dword:)",
                                   R"("v"=dword:000000001)",
                                   R"("v"=dword:0000000A)",
                                   R"("v"=hex:1)",
                                   R"("v"=hex:1,2)",
                                   R"("v"=hex:0A)",
                                   R"("v"=hex:01,)",
                                   R"("v"=hex:01 ,02)",
                                   R"("v"=hex:,01)",
                                   R"("v"=hex)",
                                   R"("v"=hex():01)",
                                   R"("v"=hex(1):01)",
                                   R"("v"=hex(2):01)",
                                   R"("v"=hex(3):01)",
                                   R"("v"=hex(07):01)",
                                   R"("v"=hex(A):01)",
                                   R"("v"=hex(7:01)",
                                   R"("v"=hex(100000000):01)",
                                   R"("v"=str:"x")",
                                   R"([HKEY_USERS\a])",
                                   R"(REGEDIT4)"}) {
        CAPTURE(std::string(line));
        CHECK_FALSE(BlockMayReplay(std::string(line) + "\r\n"));
    }
}

TEST_CASE("a value over several lines that no export writes is not replayed") {
    CHECK(BlockMayReplay("\"v\"=hex:01,\\\r\n  02\r\n"));
    for (const char* lines :
         {"\"v\"=hex:01,\\\r\n02\r\n", "\"v\"=hex:01,\\\r\n   02\r\n", "\"v\"=hex:01,\\\r\n  \r\n",
          "\"v\"=hex:01,\\\r\n\r\n", "\"v\"=\"x\r\n\"w\"=\"y\"\r\n", "\r\n\"v\"=\"x\"\r\n"})
        CHECK_FALSE(BlockMayReplay(lines));
}

TEST_CASE("line ends other than an export's and zero bytes are not replayed") {
    CHECK_FALSE(BlockMayReplay("\"v\"=\"x\"\n"));
    CHECK_FALSE(BlockMayReplay("\"v\"=\"x\ny\"\r\n"));
    CHECK_FALSE(BlockMayReplay("\"v\"=\"x\"\r"));
    CHECK_FALSE(BlockMayReplay("\"v\"=hex:01,\\\r  02\r\n"));
    CHECK_FALSE(BlockMayReplay(std::string("\"v\"=\"x\0y\"\r\n", 11)));
}

TEST_CASE("a file without the header, or with text in front of its first key, is not replayed") {
    CHECK(MayReplay("Windows Registry Editor Version 5.00\r\n\r\n[HKEY_USERS\\a]\r\n\r\n"));
    for (const char* text : {"[HKEY_USERS\\a]\r\n\r\n", "REGEDIT4\r\n\r\n[HKEY_USERS\\a]\r\n\r\n",
                             "\r\nWindows Registry Editor Version 5.00\r\n\r\n",
                             "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n",
                             "Windows Registry Editor Version 5.00\r\n[HKEY_USERS\\a]\r\n\r\n",
                             "Windows Registry Editor Version 5.00\r\n\r\n\"v\"=\"x\"\r\n"})
        CHECK_FALSE(MayReplay(text));
    CHECK_FALSE(BlockMayReplay("\r\n" + kHeader));
}

TEST_CASE("a line longer than any that an export writes is not replayed") {
    CHECK(ValueMayReplay(std::string(255, '"'), std::string(16384, '\\')));
    CHECK(MayReplay(Export("HKEY_USERS\\a\\" + std::string(130'000, 'k'), "v", "x")));
    CHECK_FALSE(ValueMayReplay("v", std::string(300'000, 'x')));
}
