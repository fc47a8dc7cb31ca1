// Where a path begins and ends in registry text, and which texts hold none.
#include <doctest/doctest.h>

#include "tests/rules/extraction.h"

namespace {

struct Row {
    std::string_view text;
    std::string_view path;
};

template <std::size_t size>
void CheckPaths(const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(PathIn(row.text) == row.path);
    }
}

}  // namespace

TEST_CASE("a text of fewer than three characters holds no path") {
    constexpr Row kRows[] = {
        {"", kNoPath},      {"C", kNoPath},  {"C:", kNoPath}, {R"(:\)", kNoPath}, {"\"", kNoPath},
        {R"("")", kNoPath}, {"**", kNoPath}, {",,", kNoPath}, {"  ", kNoPath},    {R"(C:\)", R"(C:\)"},
    };
    CheckPaths(kRows);
}

TEST_CASE("a quoted path reaches from the opening quote to the next one") {
    constexpr Row kRows[] = {
        {R"("C:\Program Files\App\app.exe" -run)", R"(C:\Program Files\App\app.exe)"},
        {R"("C:\a")", R"(C:\a)"},
        {R"("C:\a b" "C:\c")", R"(C:\a b)"},
        {R"("C:\a"C:\b)", R"(C:\a)"},
        {R"("C:\")", R"(C:\)"},
    };
    CheckPaths(kRows);
}

TEST_CASE("an opening quote without a second one holds no path") {
    constexpr Row kRows[] = {{R"("C:\a)", kNoPath}, {R"("C:\a.exe -x)", kNoPath}, {R"("C:\a, b)", kNoPath}};
    CheckPaths(kRows);
}

TEST_CASE("blanks before the closing quote do not belong to the path, other white space does") {
    constexpr Row kRows[] = {
        {R"("C:\a ")", R"(C:\a)"},  {R"("C:\a    " -x)", R"(C:\a)"}, {R"("C:\a b  ")", R"(C:\a b)"},
        {"\"C:\\a\t\"", "C:\\a\t"}, {"\"C:\\a\xA0\"", "C:\\a\xA0"},  {R"("C:\ ")", R"(C:\)"},
        {R"(" C:\a")", kNoPath},    {R"("     ")", kNoPath},
    };
    CheckPaths(kRows);
}

TEST_CASE("an asterisk anywhere in an unquoted text means that it holds no path") {
    constexpr Row kRows[] = {
        {R"(C:\a*b)", kNoPath}, {R"(C:\*)", kNoPath},  {R"(C:\a.exe -x *)", kNoPath},
        {R"(C:\a,*)", kNoPath}, {R"(*C:\a)", kNoPath}, {R"(C:\a "*")", kNoPath},
    };
    CheckPaths(kRows);
}

TEST_CASE("an asterisk is allowed in a quoted text, inside the quotes and behind them") {
    constexpr Row kRows[] = {
        {R"("C:\a*b")", R"(C:\a*b)"}, {R"("C:\*.*")", R"(C:\*.*)"}, {R"("C:\a" *)", R"(C:\a)"}};
    CheckPaths(kRows);
}

TEST_CASE("an unquoted path ends at the first of the delimiters, without the blanks before it") {
    constexpr Row kRows[] = {
        {R"(C:\a<b)", R"(C:\a)"},   {R"(C:\a>b)", R"(C:\a)"},   {R"(C:\a/b)", R"(C:\a)"},
        {R"(C:\a"b)", R"(C:\a)"},   {R"(C:\a,b)", R"(C:\a)"},   {R"(C:\a;b)", R"(C:\a)"},
        {R"(C:\a  <b)", R"(C:\a)"}, {R"(C:\a  >b)", R"(C:\a)"}, {R"(C:\a b  ,c)", R"(C:\a b)"},
        {R"(C:\a>b<c)", R"(C:\a)"}, {R"(C:\a;b,c)", R"(C:\a)"}, {R"(C:\a<)", R"(C:\a)"},
        {R"(C:\ <b)", R"(C:\)"},    {"C:\\a\t<b", "C:\\a\t"},   {"C:\\a\xA0<b", "C:\\a\xA0"},
    };
    CheckPaths(kRows);
}

TEST_CASE("an unquoted path without a delimiter reaches to the end of the text, blanks included") {
    constexpr Row kRows[] = {{R"(C:\a)", R"(C:\a)"},
                             {R"(C:\a b)", R"(C:\a b)"},
                             {R"(C:\a  )", R"(C:\a  )"},
                             {R"(C:\ )", R"(C:\ )"}};
    CheckPaths(kRows);
}

TEST_CASE("a delimiter at the very start of an unquoted text is no end, and hides those behind it") {
    constexpr Row kRows[] = {
        {R"(<:\a)", R"(<:\a)"},     {R"(>:\a)", R"(>:\a)"},   {R"(<:\a>b)", R"(<:\a>b)"},
        {R"(>:\a<b)", R"(>:\a<b)"}, {R"(<:\a,b)", R"(<:\a)"}, {R"(<:\a"b)", R"(<:\a)"},
    };
    CheckPaths(kRows);
}

TEST_CASE("a path that quotes or blanks leave with less than two characters is none") {
    // The characters behind the closing quote must not pass for the drive of the empty path.
    constexpr Row kRows[] = {{R"("":\a)", kNoPath},
                             {R"("":\a")", kNoPath},
                             {R"("" C:\a)", kNoPath},
                             {R"("C" :\a)", kNoPath},
                             {"C ,", kNoPath}};
    CheckPaths(kRows);
}

TEST_CASE("only a path whose second and third characters are a colon and a backslash counts") {
    constexpr Row kRows[] = {
        {R"(C:\a)", R"(C:\a)"},
        {R"(z:\a)", R"(z:\a)"},
        {R"(1:\a)", R"(1:\a)"},
        {R"( :\a)", R"( :\a)"},
        {"\xE9:\\a", "\xE9:\\a"},
        {R"(\\server\share\x)", kNoPath},
        {R"("\\server\share\x")", kNoPath},
        {"app.exe", kNoPath},
        {R"(a\b.exe)", kNoPath},
        {R"(..\a.exe)", kNoPath},
        {R"(\a.exe)", kNoPath},
        {"C:a.exe", kNoPath},
        {"C:/a.exe", kNoPath},
        {R"(C\:a.exe)", kNoPath},
        {R"(C;\a.exe)", kNoPath},
        {R"(CC:\a.exe)", kNoPath},
        {R"( C:\a.exe)", kNoPath},
        {R"(\??\C:\a.exe)", kNoPath},
        {R"(%SystemRoot%\a.exe)", kNoPath},
        {R"(run C:\a.exe)", kNoPath},
    };
    CheckPaths(kRows);
}

TEST_CASE("every path is cut again at its first bracket, caret, slash, comma or semicolon") {
    constexpr Row kRows[] = {
        {R"("C:\a^b")", R"(C:\a)"},  {R"("C:\a/b")", R"(C:\a)"},    {R"("C:\a,b")", R"(C:\a)"},
        {R"("C:\a;b")", R"(C:\a)"},  {R"("C:\a[b")", R"(C:\a)"},    {R"("C:\a]b")", R"(C:\a)"},
        {R"("C:\a ^b")", R"(C:\a)"}, {R"("C:\a  [b]")", R"(C:\a)"}, {R"("C:\a]b[c;d")", R"(C:\a)"},
        {R"(C:\a^b)", R"(C:\a)"},    {R"(C:\a[b)", R"(C:\a)"},      {R"(C:\a]b)", R"(C:\a)"},
        {R"(C:\a  [1])", R"(C:\a)"}, {R"(C:\a[b<c)", R"(C:\a)"},    {R"(C:\ ^)", R"(C:\)"},
        {R"(C:\a<b^c)", R"(C:\a)"},  {R"("C:\a" [b])", R"(C:\a)"},  {"\"C:\\a\t^b\"", "C:\\a\t"},
    };
    CheckPaths(kRows);
}

TEST_CASE("no other character ends an unquoted path") {
    constexpr std::string_view kEnding = "<>/\",;^[]";
    for (int code = 1; code < 256; ++code) {
        const char letter = static_cast<char>(code);
        const std::string text = std::string(R"(C:\a)") + letter + "b";
        CAPTURE(code);
        if (letter == '*') {
            CHECK(PathIn(text) == kNoPath);
        } else {
            CHECK(PathIn(text) == (kEnding.find(letter) != std::string_view::npos ? R"(C:\a)" : text));
        }
    }
}

TEST_CASE("no other character ends a quoted path") {
    constexpr std::string_view kEnding = "/\",;^[]";
    for (int code = 1; code < 256; ++code) {
        const char letter = static_cast<char>(code);
        const std::string text = std::string(R"(C:\a)") + letter + "b";
        CAPTURE(code);
        CHECK(PathIn('"' + text + '"') ==
              (kEnding.find(letter) != std::string_view::npos ? R"(C:\a)" : text));
    }
}

TEST_CASE("a path whose very first character ends it is found, and is empty") {
    constexpr Row kRows[] = {
        {R"(,:\x)", ""}, {R"(;:\x)", ""}, {R"(/:\x)", ""},   {R"(^:\x)", ""},
        {R"([:\x)", ""}, {R"(]:\x)", ""}, {R"(",:\x")", ""}, {R"("^:\x" -y)", ""},
    };
    CheckPaths(kRows);
}
