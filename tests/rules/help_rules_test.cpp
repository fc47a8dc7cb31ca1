#include "app/help_rules.h"

#include <doctest/doctest.h>

#include "tests/rules/exact_buffer.h"

namespace {

std::string HelpFile(std::string_view folder) {
    const CExactBuffer block = CExactBuffer::Unterminated(folder);
    return HelpFileIn(block.View());
}

}  // namespace

TEST_CASE("the help file stands in the program's folder") {
    CHECK(HelpFile(R"(D:\Tools)") == R"(D:\Tools\VellumorHelp.chm)");
    CHECK(HelpFile(R"(C:\Program Files\Vellumor)") == R"(C:\Program Files\Vellumor\VellumorHelp.chm)");
    CHECK(HelpFile("D:") == R"(D:\VellumorHelp.chm)");
    CHECK(HelpFile("D:\\\x80\xFF") == "D:\\\x80\xFF\\VellumorHelp.chm");
    CHECK(HelpFile("D:\\" + Letters(255)) == "D:\\" + Letters(255) + R"(\VellumorHelp.chm)");
}

TEST_CASE("a folder that ends in a backslash gets no second one") {
    CHECK(HelpFile(R"(D:\)") == R"(D:\VellumorHelp.chm)");
    CHECK(HelpFile(R"(D:\Tools\)") == R"(D:\Tools\VellumorHelp.chm)");
    CHECK(HelpFile("D:\\Tools/") == R"(D:\Tools/\VellumorHelp.chm)");
}
