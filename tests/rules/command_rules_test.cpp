// How a command line or a module's name is turned into the name of a file.
#include <doctest/doctest.h>

#include "registry/file_reference_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

struct Row {
    std::string_view text;
    std::string_view result;
};

using TextRule = std::string_view (*)(std::string_view);

/// Applies a rule to each text in a block with nothing behind it.
template <std::size_t size>
void CheckRule(TextRule rule, const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.text);
        const CExactBuffer block = CExactBuffer::Unterminated(row.text);
        CHECK(rule(block.View()) == row.result);
    }
}

using TextTest = bool (*)(std::string_view);

void CheckTest(TextTest test, bool expected, std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts) {
        CAPTURE(text);
        const CExactBuffer block = CExactBuffer::Unterminated(text);
        CHECK(test(block.View()) == expected);
    }
}

std::string_view CutAtBlankBehindExe(std::string_view text) { return KeepUpToExe(text, " "); }
std::string_view CutBehindExe(std::string_view text) { return KeepUpToExe(text, ""); }

}  // namespace

TEST_CASE("a command is kept up to the program's extension that a blank follows") {
    constexpr Row kRows[] = {
        {R"(C:\a.exe -x)", R"(C:\a.exe)"},
        {R"(C:\A.EXE -x)", R"(C:\A.EXE)"},
        {"a.exe ", "a.exe"},
        {"a.exe b.exe c", "a.exe"},
        {"A.EXE B.EXE c", "A.EXE"},
        {"A.EXE b.exe c", "A.EXE b.exe"},  // lower case is looked for first
        {"a.exe B.EXE c", "a.exe"},
        {"a.exe.exe c", "a.exe.exe"},
        {".exe ", ".exe"},
        {"\xFC\x80.exe \xFC", "\xFC\x80.exe"},
    };
    CheckRule(CutAtBlankBehindExe, kRows);
}

TEST_CASE("a command without such an extension stays as it is") {
    constexpr Row kRows[] = {
        {"", ""},
        {"a.exe", "a.exe"},
        {"a.EXE", "a.EXE"},
        {"a.exe\"", "a.exe\""},
        {"a.exe/x", "a.exe/x"},
        {"a.exe\tx", "a.exe\tx"},
        {"a.Exe x", "a.Exe x"},
        {"a.com x", "a.com x"},
        {"aexe x", "aexe x"},
        {"a.exe,b c", "a.exe,b c"},
        {".ex", ".ex"},
        {"a.EXE\"", "a.EXE\""},
        {"A.EXE/x y", "A.EXE/x y"},
    };
    CheckRule(CutAtBlankBehindExe, kRows);
}

TEST_CASE("a missing file is tried again up to its extension, whatever follows that") {
    constexpr Row kRows[] = {
        {R"(C:\Windows\notepad.exe|x)", R"(C:\Windows\notepad.exe)"},
        {R"(C:\Windows\NOTEPAD.EXE|x)", R"(C:\Windows\NOTEPAD.EXE)"},
        {"a.exex", "a.exe"},
        {"a.exe", "a.exe"},
        {"a.exe.exe", "a.exe"},
        {"A.EXE|b.exe|c", "A.EXE|b.exe"},
        {"a.exe|B.EXE", "a.exe"},
        {"a.Exe|x", "a.Exe|x"},
        {"a.ex", "a.ex"},
        {"", ""},
    };
    CheckRule(CutBehindExe, kRows);
}

TEST_CASE("a program is told by its extension in lower or upper case anywhere in the text") {
    CheckTest(HoldsExe, true,
              {"a.exe", "a.EXE", ".exe", ".EXE", R"(C:\a.exe|x)", R"(C:\A.EXE -x)", "a.exex"});
    CheckTest(HoldsExe, false, {"", "exe", "EXE", "a.Exe", "a.eXE", "a.ex", ".e", "a.exE", "a. exe"});
}

TEST_CASE("the Windows folder's variable is told in two spellings anywhere in the text") {
    CheckTest(
        HoldsSystemRoot, true,
        {"%SystemRoot%", "%systemroot%", R"(%SystemRoot%\x)", R"(x %SystemRoot%)", R"(C:\%systemroot%\x)"});
    CheckTest(HoldsSystemRoot, false,
              {"", "%SYSTEMROOT%", "%Systemroot%", "%systemRoot%", "%SystemRoot", "SystemRoot%", "%windir%",
               "%SystemDrive%", "%System Root%"});
}

TEST_CASE("every occurrence of a variable is replaced") {
    struct ReplaceRow {
        std::string_view text;
        std::string_view token;
        std::string_view replacement;
        std::string_view result;
    };
    constexpr ReplaceRow kRows[] = {
        {R"(%windir%\a.exe)", "%windir%", R"(C:\WINDOWS)", R"(C:\WINDOWS\a.exe)"},
        {R"(x %windir%)", "%windir%", "W", "x W"},
        {R"(%windir%;%windir%\x)", "%windir%", "W", R"(W;W\x)"},
        {"%windir%%windir%%windir%", "%windir%", "W", "WWW"},
        {"%windir%", "%windir%", "W", "W"},
        {"%WINDIR% %WinDir%", "%windir%", "W", "%WINDIR% %WinDir%"},
        {"%windir", "%windir%", "W", "%windir"},
        {"", "%windir%", "W", ""},
        {"a%windir%b", "%windir%", "", "ab"},
        {"aaa", "aa", "X", "Xa"},
        {"\xFC%windir%\xFF", "%windir%", "\xE4", "\xFC\xE4\xFF"},
    };
    for (const ReplaceRow& row : kRows) {
        CAPTURE(row.text);
        const CExactBuffer text = CExactBuffer::Unterminated(row.text);
        const CExactBuffer token = CExactBuffer::Unterminated(row.token);
        const CExactBuffer replacement = CExactBuffer::Unterminated(row.replacement);
        CHECK(ReplaceEvery(text.View(), token.View(), replacement.View()) == row.result);
    }
}

TEST_CASE("a replacement that holds the variable itself is not replaced again") {
    CHECK(ReplaceEvery("%a%-%a%", "%a%", "%a%%a%") == "%a%%a%-%a%%a%");
    CHECK(ReplaceEvery("%a%b", "%a%", "%a") == "%ab");
    CHECK(ReplaceEvery("%%a%a%", "%a%", "") == "%a%");
    CHECK(ReplaceEvery("%a%%", "%a%", "%a") == "%a%");
}

TEST_CASE("a quoted command is what lies between its first quote and its last") {
    constexpr Row kRows[] = {
        {R"("C:\a b.exe")", R"(C:\a b.exe)"},
        {R"("C:\a.exe" -x)", R"(C:\a.exe)"},
        {R"("C:\a.exe" "-x" y)", R"(C:\a.exe" "-x)"},
        {R"(" a ")", " a "},
        {R"("")", ""},
        {R"(""")", "\""},
        {R"("" x)", ""},
    };
    CheckRule(Unquote, kRows);
}

TEST_CASE("an opening quote without a second one leaves nothing") {
    constexpr Row kRows[] = {{"\"", ""}, {R"("C:\a.exe)", ""}, {R"("C:\a.exe -x)", ""}};
    CheckRule(Unquote, kRows);
}

TEST_CASE("a command that does not begin with a quote keeps all its quotes") {
    constexpr Row kRows[] = {
        {"", ""}, {"a", "a"}, {R"(a "b")", R"(a "b")"}, {R"( "a")", R"( "a")"}, {"a\"", "a\""}};
    CheckRule(Unquote, kRows);
}

TEST_CASE("a name is cut behind the three letters that follow its last dot") {
    constexpr Row kRows[] = {
        {"a.dll,-1", "a.dll"},
        {R"(C:\x\a.dll -101)", R"(C:\x\a.dll)"},
        {"a.b.dllx", "a.b.dll"},
        {"a.dll.old-1", "a.dll.old"},
        {"a.html", "a.htm"},
        {R"(C:\a.b\cd)", R"(C:\a.b\c)"},
        {"a.dll", "a.dll"},
        {"a.so", "a.so"},
        {"a.", "a."},
        {".", "."},
        {".dllx", ".dll"},
        {"a.dll..", "a.dll.."},
    };
    CheckRule(KeepUpToExtension, kRows);
}

TEST_CASE("a name without a dot is not cut") {
    constexpr Row kRows[] = {
        {"", ""}, {"a", "a"}, {"rundll32 x", "rundll32 x"}, {R"(C:\abcdefgh)", R"(C:\abcdefgh)"}};
    CheckRule(KeepUpToExtension, kRows);
}

TEST_CASE("a module's name ends in a dot and exactly three characters") {
    CheckTest(EndsInThreeLetterExtension, true,
              {"a.dll", R"(C:\a.b\c.ocx)", ".dll", "a.b.dll", "a.d l", "a.\xE4\xF6\xFC"});
    CheckTest(EndsInThreeLetterExtension, false,
              {"", "a", "dll", "a.", ".", "a.d", "a.dl", "a.html", "a.dll ", "a.dll.", "a.dll,-1", "a.dll.b",
               ".dl"});
}

TEST_CASE("only the letters A to Z get their lower case") {
    CHECK(LowerCase("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == "abcdefghijklmnopqrstuvwxyz");
    CHECK(LowerCase("abcdefghijklmnopqrstuvwxyz") == "abcdefghijklmnopqrstuvwxyz");
    CHECK(LowerCase("@[`{0189 %_\\/:.") == "@[`{0189 %_\\/:.");
    CHECK(LowerCase("\xC4\xD6\xDC\x80\xFF") == "\xC4\xD6\xDC\x80\xFF");
    CHECK(LowerCase(R"(%SystemRoot%\System32\A.DLL)") == R"(%systemroot%\system32\a.dll)");
    CHECK(LowerCase("").empty());
}
