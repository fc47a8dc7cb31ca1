// What the deep scan drops from the start of data before it looks for a path.
#include <doctest/doctest.h>

#include "analysis/deep_scan_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

std::string Drop(std::string_view data) {
    CExactBuffer block = CExactBuffer::Terminated(data);
    DropPrefixes(block.Data());
    return block.Text();
}

struct Row {
    std::string_view data;
    std::string_view result;
};

template <std::size_t size>
void CheckDrops(const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.data);
        CHECK(Drop(row.data) == row.result);
    }
}

}  // namespace

TEST_CASE("each known prefix is dropped from the start of the data") {
    constexpr Row kRows[] = {
        {R"(,FileRenameShortToLong C:\x.dll)", R"(C:\x.dll)"},
        {R"([F00000000][T01C9D2A3B4C5D6E7]*C:\x.dll)", R"(C:\x.dll)"},
        {R"(file:///C:\x.htm)", R"(C:\x.htm)"},
        {R"(file://C:\x.htm)", R"(C:\x.htm)"},
        {R"(\??\C:\x.sys)", R"(C:\x.sys)"},
        {R"(@C:\x.dll,-101)", R"(C:\x.dll,-101)"},
        {"@C:\\\x80\xFF", "C:\\\x80\xFF"},
    };
    CheckDrops(kRows);
}

TEST_CASE("data without a known prefix stay as they are") {
    constexpr Row kRows[] = {
        {"", ""},
        {R"(C:\x.dll)", R"(C:\x.dll)"},
        {R"(,FileRenameShortToLong)", R"(,FileRenameShortToLong)"},
        {",FileRenameShortToLong\tC:\\x", ",FileRenameShortToLong\tC:\\x"},
        {R"(FileRenameShortToLong C:\x)", R"(FileRenameShortToLong C:\x)"},
        {R"(,filerenameshorttolong C:\x)", R"(,filerenameshorttolong C:\x)"},
        {R"([F00000000]*C:\x)", R"([F00000000]*C:\x)"},
        {R"([F00000001][T]*C:\x)", R"([F00000001][T]*C:\x)"},
        {R"([f00000000][T]*C:\x)", R"([f00000000][T]*C:\x)"},
        {R"(file:/C:\x)", R"(file:/C:\x)"},
        {R"(FILE:///C:\x)", R"(FILE:///C:\x)"},
        {R"(File://C:\x)", R"(File://C:\x)"},
        {R"(http://C:\x)", R"(http://C:\x)"},
        {R"(\?\C:\x)", R"(\?\C:\x)"},
        {R"(\\?\C:\x)", R"(\\?\C:\x)"},
        {R"(??\C:\x)", R"(??\C:\x)"},
        {R"(\??C:\x)", R"(\??C:\x)"},
    };
    CheckDrops(kRows);
}

TEST_CASE("a prefix in the middle drops its count of characters from the start all the same") {
    constexpr Row kRows[] = {
        {R"(C:\x,FileRenameShortToLong y)", "ong y"},
        {R"(C:\Windows\file.dll [F00000000][x)", "[x"},
        {R"(see file:///C:\x)", R"(:///C:\x)"},
        {R"(see file://C:\x)", R"(e://C:\x)"},
        {R"(C:\a\??\b)", R"(\??\b)"},
        {R"(C:\gone\a@b.txt)", R"(:\gone\a@b.txt)"},
        {R"(C:\gone\a.txt@)", R"(:\gone\a.txt@)"},
    };
    CheckDrops(kRows);
}

TEST_CASE("each prefix is dropped once, and what it leaves is looked at for the next") {
    constexpr Row kRows[] = {
        {R"(,FileRenameShortToLong [F00000000][T01C9D2A3B4C5D6E7]*file:///file://\??\@C:\x)", R"(C:\x)"},
        {R"(,FileRenameShortToLong ,FileRenameShortToLong C:\x)", R"(,FileRenameShortToLong C:\x)"},
        {R"(file:///file://C:\x)", R"(C:\x)"},
        {R"(file:///file:///C:\x)", R"(/C:\x)"},
        {R"(file://file://C:\x)", R"(file://C:\x)"},
        {R"(\??\\??\C:\x)", R"(\??\C:\x)"},
        {R"(@@C:\x)", R"(@C:\x)"},
        {R"(@C:\a@b)", R"(C:\a@b)"},
    };
    CheckDrops(kRows);
}

TEST_CASE("the prefixes are dropped in their order") {
    constexpr Row kRows[] = {
        {R"(,FileRenameShortToLong [F00000000][T01C9D2A3B4C5D6E7]*C:\x)", R"(C:\x)"},
        {R"([F00000000][T01C9D2A3B4C5D6E7]*file:///C:\x)", R"(C:\x)"},
        {R"([F00000000][T01C9D2A3B4C5D6E7]*,FileRenameShortToLong C:\x)",
         R"(C5D6E7]*,FileRenameShortToLong C:\x)"},
        {R"(file:///C:\x)", R"(C:\x)"},
        {R"(file://file:///C:\x)", R"(ile:///C:\x)"},
        {R"(file://\??\C:\x)", R"(C:\x)"},
        {R"(\??\file://C:\x)", R"(e://C:\x)"},
        {R"(\??\@C:\x)", R"(C:\x)"},
        {R"(@\??\C:\x)", R"(\C:\x)"},
        {R"(@file://C:\x)", R"(/C:\x)"},
    };
    CheckDrops(kRows);
}

TEST_CASE("data shorter than what is to be dropped become empty") {
    constexpr Row kRows[] = {
        {"[F00000000][", ""},
        {"[F00000000][T01C9D2A3B4C5D6E7]", ""},     // 30 characters
        {"[F00000000][T01C9D2A3B4C5D6E7]*", ""},    // 31
        {"[F00000000][T01C9D2A3B4C5D6E7]*x", "x"},  // 32
        {",FileRenameShortToLong ", ""},
        {"file:///", ""},
        {"file://", ""},
        {R"(\??\)", ""},
        {"@", ""},
    };
    CheckDrops(kRows);
}

TEST_CASE("data that fill their 260 bytes without a terminator are dropped from up to the byte behind them") {
    CExactBuffer block = CExactBuffer::Sized("@" + Letters(258) + "z", 261);
    DropPrefixes(block.Data());
    CHECK(block.Text() == Letters(258) + "z");
}
