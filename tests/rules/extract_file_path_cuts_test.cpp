// What an extraction changes in its source text: the ends that it plants behind programs and extensions.
#include <doctest/doctest.h>

#include "tests/rules/extraction.h"

namespace {

struct Row {
    std::string_view text;
    std::string_view path;  // extracted
    std::string_view left;  // the text afterwards
};

template <std::size_t size>
void CheckCuts(const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.text);
        const Extraction extraction = Extract(row.text);
        CHECK(extraction.path == row.path);
        CHECK(extraction.text == row.left);
    }
}

/// Rows whose path and changed text are the same.
struct SameRow {
    std::string_view text;
    std::string_view left;
};

template <std::size_t size>
void CheckCuts(const SameRow (&rows)[size]) {
    for (const SameRow& row : rows) CheckCuts({Row{row.text, row.left, row.left}});
}

}  // namespace

TEST_CASE("a program's arguments are cut off, in the path and in the text it came from") {
    constexpr SameRow kRows[] = {
        {R"(C:\gone\app.exe -x)", R"(C:\gone\app.exe)"},
        {R"(C:\gone\APP.EXE -x)", R"(C:\gone\APP.EXE)"},
        {R"(C:\gone\app.exe x)", R"(C:\gone\app.exe)"},
        {R"(C:\gone\APP.EXE x)", R"(C:\gone\APP.EXE)"},
        {R"(C:\gone\app.exe )", R"(C:\gone\app.exe)"},
        {R"(C:\gone\APP.EXE )", R"(C:\gone\APP.EXE)"},
        {R"(C:\gone\app.exe   x)", R"(C:\gone\app.exe)"},
        {R"(C:\gone\a b.exe -x y)", R"(C:\gone\a b.exe)"},
        {"C:\\B\xFCro\\\xE4.exe -x", "C:\\B\xFCro\\\xE4.exe"},
    };
    CheckCuts(kRows);
}

TEST_CASE("a comma ends the path and the blank behind the program cuts it") {
    constexpr Row kRows[] = {{R"(C:\WINDOWS\system32\rundll32.exe shell32.dll,Control)",
                              R"(C:\WINDOWS\system32\rundll32.exe)", R"(C:\WINDOWS\system32\rundll32.exe)"}};
    CheckCuts(kRows);
}

TEST_CASE("an extension in mixed case, or with no blank behind it, cuts nothing") {
    constexpr SameRow kRows[] = {
        {R"(C:\gone\app.Exe -x)", R"(C:\gone\app.Exe -x)"},
        {R"(C:\gone\app.eXE x)", R"(C:\gone\app.eXE x)"},
        {R"(C:\gone\app.exe)", R"(C:\gone\app.exe)"},
        {R"(C:\gone\app.exe-x)", R"(C:\gone\app.exe-x)"},
        {"C:\\gone\\app.exe\tx", "C:\\gone\\app.exe\tx"},
        {R"(C:\gone\app.com -x)", R"(C:\gone\app.com -x)"},
        {R"(C:\gone\appexe -x)", R"(C:\gone\appexe -x)"},
    };
    CheckCuts(kRows);
}

TEST_CASE("of several programs the first one in lower case is cut behind") {
    constexpr SameRow kRows[] = {
        {R"(C:\a.exe x\b.exe y)", R"(C:\a.exe)"}, {R"(C:\a.exe -x\b.exe -y)", R"(C:\a.exe)"},
        {R"(C:\A.EXE x\B.EXE y)", R"(C:\A.EXE)"}, {R"(C:\A.EXE x\b.exe y)", R"(C:\A.EXE x\b.exe)"},
        {R"(C:\a.exe x\B.EXE y)", R"(C:\a.exe)"},
    };
    CheckCuts(kRows);
}

TEST_CASE("the cut at a dash comes first, and what it leaves is cut at a blank") {
    constexpr SameRow kRows[] = {
        {R"(C:\a.exe x\b.exe -y)", R"(C:\a.exe)"},
        // Cut behind b.exe, the text holds no lower-case program before a blank any more.
        {R"(C:\A.EXE x\b.exe -y)", R"(C:\A.EXE)"},
        // Cut behind A.EXE, b.exe is gone.
        {R"(C:\A.EXE -x\b.exe y)", R"(C:\A.EXE)"},
        // The lower-case dash is found, so the upper-case one is not looked for; likewise the blank.
        {R"(C:\A.EXE -x\b.exe z\c.exe -y)", R"(C:\A.EXE -x\b.exe)"},
        {R"(C:\A.EXE -x\B.EXE -y\c.exe z)", R"(C:\A.EXE)"},
    };
    CheckCuts(kRows);
}

TEST_CASE("a resource number behind a three-letter extension is cut off") {
    constexpr SameRow kRows[] = {
        {R"(C:\x\lib.dll\1)", R"(C:\x\lib.dll)"},
        {R"(C:\x\lib.dll\2)", R"(C:\x\lib.dll)"},
        {R"(C:\x\lib.OCX\12)", R"(C:\x\lib.OCX)"},
        {R"(C:\x\lib.dll\)", R"(C:\x\lib.dll)"},
        {R"(C:\x\a.b.tlb\3)", R"(C:\x\a.b.tlb)"},
        {R"(C:\x\a.exe\3)", R"(C:\x\a.exe)"},
        {R"(C:\x.dir\lib)", R"(C:\x.dir)"},
        {R"(C:\a.b\c\d)", R"(C:\a.b\c)"},
        {"C:\\x\\lib.\xE4\xF6\xFC\\1", "C:\\x\\lib.\xE4\xF6\xFC"},
    };
    CheckCuts(kRows);
}

TEST_CASE("only a backslash exactly four places behind the last dot cuts the text") {
    constexpr SameRow kRows[] = {
        {R"(C:\x\lib.so\1)", R"(C:\x\lib.so\1)"},       {R"(C:\x\lib.html\1)", R"(C:\x\lib.html\1)"},
        {R"(C:\x\lib.dll/1)", R"(C:\x\lib.dll)"},       {R"(C:\x\lib.dll 1)", R"(C:\x\lib.dll 1)"},
        {R"(C:\x.dll\a.txt)", R"(C:\x.dll\a.txt)"},     {R"(C:\x.dll\a.b)", R"(C:\x.dll\a.b)"},
        {R"(C:\x\lib.dll\2.5)", R"(C:\x\lib.dll\2.5)"}, {R"(C:\x\lib\1)", R"(C:\x\lib\1)"},
    };
    for (const SameRow& row : kRows) {
        CAPTURE(row.text);
        const Extraction extraction = Extract(row.text);
        CHECK(extraction.path == row.left);
        CHECK(extraction.text == row.text);
    }
}

TEST_CASE("fewer than four characters behind the last dot are never read past") {
    constexpr SameRow kRows[] = {
        {R"(C:\a.)", R"(C:\a.)"},       {R"(C:\a.b)", R"(C:\a.b)"},   {R"(C:\a.bc)", R"(C:\a.bc)"},
        {R"(C:\a.bcd)", R"(C:\a.bcd)"}, {R"(C:\a.b\)", R"(C:\a.b\)"}, {R"(C:\abc)", R"(C:\abc)"},
    };
    CheckCuts(kRows);
    // A backslash four places behind the dot, but behind the end of the text, stays.
    constexpr std::string_view kText("C:\\a.b\0x\\", 9);
    CHECK(Extract(kText).textBytes == std::string("C:\\a.b\0x\\\0", 10));
}

TEST_CASE("the cuts reach the whole source text, beyond the end of the path") {
    constexpr Row kRows[] = {
        {R"(C:\x\a.txt,C:\b.exe -y)", R"(C:\x\a.txt)", R"(C:\x\a.txt,C:\b.exe)"},
        {R"(C:\x\a.txt;C:\B.EXE y)", R"(C:\x\a.txt)", R"(C:\x\a.txt;C:\B.EXE)"},
        {R"("C:\x\a.txt" b.exe -y)", R"(C:\x\a.txt)", R"("C:\x\a.txt" b.exe)"},
        {R"("C:\x\a.dll" b.ini\3)", R"(C:\x\a.dll)", R"("C:\x\a.dll" b.ini)"},
        // The text's last dot is not the path's: the path keeps its number.
        {R"(C:\x\lib.dll\1,b.txt)", R"(C:\x\lib.dll\1)", R"(C:\x\lib.dll\1,b.txt)"},
        {R"(C:\x\lib.dll\1,b.exe -y)", R"(C:\x\lib.dll\1)", R"(C:\x\lib.dll\1,b.exe)"},
        {R"(,:\b.exe -y)", "", R"(,:\b.exe)"},
    };
    CheckCuts(kRows);
}

TEST_CASE("a quoted path is cut as well, and the text keeps its opening quote alone") {
    constexpr Row kRows[] = {
        {R"("C:\a.exe -b\c.txt")", R"(C:\a.exe)", R"("C:\a.exe)"},
        {R"("C:\A.EXE b")", R"(C:\A.EXE)", R"("C:\A.EXE)"},
        {R"("C:\x\lib.dll\2")", R"(C:\x\lib.dll)", R"("C:\x\lib.dll)"},
        {R"("C:\a.exe" -x)", R"(C:\a.exe)", R"("C:\a.exe" -x)"},
    };
    CheckCuts(kRows);
}

TEST_CASE("the last dot is searched in the text as the cuts before have left it") {
    // Behind the planted end the backslash of "x.dll\3" is no longer part of the text, so it stays.
    CHECK(Extract(R"(C:\a\b.exe x.dll\3)").textBytes == std::string("C:\\a\\b.exe\0x.dll\\3\0", 19));
}

TEST_CASE("the cuts shorten the copied path only by the end that they plant in it") {
    CHECK(Extract(R"(C:\a.exe -x)", 13).pathBytes == std::string("C:\\a.exe\0-x\0\xEE", 13));
    CHECK(Extract(R"(C:\x\l.dll\2)", 14).pathBytes == std::string("C:\\x\\l.dll\0"
                                                                  "2\0\xEE",
                                                                  14));
}

TEST_CASE("a text that holds no path is left as it was") {
    for (const std::string_view text : {"app.exe -x", R"("C:\a.exe -x)", R"(C:\a*.exe -x)",
                                        R"(\\server\x.dll\2)", "C:a.EXE x", R"("":\b.exe -x)"}) {
        CAPTURE(text);
        const Extraction extraction = Extract(text);
        CHECK(extraction.path == kNoPath);
        CHECK(extraction.text == text);
        CHECK(extraction.pathBytes == Letters(kPathBytes, kUntouched));
    }
}
