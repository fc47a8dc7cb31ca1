// How the text of a service's image is brought into the form of a path.
#include <doctest/doctest.h>

#include <string>
#include <string_view>

#include "registry/file_reference_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

struct Row {
    std::string_view text;
    std::string_view result;
};

/// Applies a rule to each text in a block with nothing behind it.
template <class Rule, std::size_t size>
void CheckRule(Rule rule, const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.text);
        const CExactBuffer block = CExactBuffer::Unterminated(row.text);
        CHECK(rule(block.View()) == row.result);
    }
}

}  // namespace

TEST_CASE("a system folder at the start is spelled with its variable") {
    CheckRule(SpellOutSystemFolder, {{R"(system32\x.sys)", R"(%systemroot%\system32\x.sys)"},
                                     {R"(System32\x.sys)", R"(%systemroot%\System32\x.sys)"},
                                     {R"(SYSTEM32\x.sys)", R"(SYSTEM32\x.sys)"},
                                     {"system32", R"(%systemroot%\system32)"},
                                     {"system3", "system3"},
                                     {"system32x", R"(%systemroot%\system32x)"},
                                     {R"(\system32\x.sys)", R"(\system32\x.sys)"},
                                     {R"( system32\x.sys)", R"( system32\x.sys)"},
                                     {R"(C:\system32\x.sys)", R"(C:\system32\x.sys)"},
                                     {"", ""}});
}

TEST_CASE("a system root at the start is spelled as its variable") {
    CheckRule(SpellOutSystemFolder, {{R"(\SystemRoot\x.sys)", R"(%systemroot%\x.sys)"},
                                     {R"(\systemroot\x.sys)", R"(%systemroot%\x.sys)"},
                                     {R"(\SYSTEMROOT\x.sys)", R"(\SYSTEMROOT\x.sys)"},
                                     {R"(\Systemroot\x.sys)", R"(\Systemroot\x.sys)"},
                                     {R"(\SystemRoo)", R"(\SystemRoo)"},
                                     {R"(\SystemRoot)", "%systemroot%"},
                                     {R"(SystemRoot\x.sys)", R"(SystemRoot\x.sys)"},
                                     {R"(%SystemRoot%\x.sys)", R"(%SystemRoot%\x.sys)"},
                                     {R"(\??\\SystemRoot\x.sys)", R"(\??\\SystemRoot\x.sys)"}});
}

TEST_CASE("a form that stands at the start is replaced wherever it stands, another one is not") {
    CheckRule(SpellOutSystemFolder,
              {{R"(system32\system32\x)", R"(%systemroot%\system32\%systemroot%\system32\x)"},
               {R"(System32\system32\x)", R"(%systemroot%\System32\system32\x)"},
               {R"(\SystemRoot\SystemRoot\x)", R"(%systemroot%%systemroot%\x)"},
               {R"(\SystemRoot\systemroot\x)", R"(%systemroot%\systemroot\x)"},
               {R"(\SystemRoot\system32\x)", R"(%systemroot%\system32\x)"},
               {R"(system32\SystemRoot)", R"(%systemroot%\system32\SystemRoot)"}});
}

TEST_CASE("what stands before the first drive is dropped") {
    CheckRule(KeepFromDrive, {{R"(\??\C:\x\y.sys)", R"(C:\x\y.sys)"},
                              {R"(C:\x\y.sys)", R"(C:\x\y.sys)"},
                              {R"(a C:\x D:\y)", R"(C:\x D:\y)"},
                              {R"(x\y.sys)", R"(x\y.sys)"},
                              {"C:x", "C:x"},
                              {"C:/x", "C:/x"},
                              {R"(:\)", R"(:\)"},
                              {R"(:\x)", R"(:\x)"},
                              {R"(?:\)", R"(?:\)"},
                              {R"(xC:\)", R"(C:\)"},
                              {"C:", "C:"},
                              {"", ""}});
}

TEST_CASE("switches behind a blank are cut, those with a minus first") {
    CheckRule(DropSwitches, {{"x.sys -k", "x.sys"},
                             {"x.sys /k", "x.sys"},
                             {"x.sys -a -b", "x.sys"},
                             {"x.sys /a -b", "x.sys"},
                             {"x.sys -a /b", "x.sys"},
                             {"x-y.sys", "x-y.sys"},
                             {"x/y.sys", "x/y.sys"},
                             {"x.sys k", "x.sys k"},
                             {"x.sys  -k", "x.sys "},
                             {"x.sys -", "x.sys"},
                             {"x.sys ", "x.sys "},
                             {" -k", ""},
                             {" /k", ""},
                             {"-k", "-k"},
                             {"", ""}});
}
