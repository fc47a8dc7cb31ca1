#include "repair/undo_name_rules.h"

#include <doctest/doctest.h>

TEST_CASE("an undo file's name is shown as a date") {
    CHECK(ShownUndoDate("2009.05.14.16.03.27.reg") == "2009/05/14/16:03:27");
    CHECK(ShownUndoDate("2009.05.14.16.03.27.REG") == "2009/05/14/16:03:27");
}

TEST_CASE("the first three dots become slashes, the next two colons, all others stay") {
    CHECK(ShownUndoDate("a.reg") == std::nullopt);
    CHECK(ShownUndoDate("a.b.reg") == "a/b");
    CHECK(ShownUndoDate("a.b.c.d.reg") == "a/b/c/d");
    CHECK(ShownUndoDate("a.b.c.d.e.reg") == "a/b/c/d:e");
    CHECK(ShownUndoDate("1.2.3.4.5.6.7.8.reg") == "1/2/3/4:5:6.7.8");
    CHECK(ShownUndoDate("...........reg") == "///::.....");
}

TEST_CASE("a name without a dot before its ending has no date") {
    CHECK(ShownUndoDate("mine.reg") == std::nullopt);
    CHECK(ShownUndoDate(".reg") == std::nullopt);
    CHECK(ShownUndoDate("reg") == std::nullopt);
    CHECK(ShownUndoDate("") == std::nullopt);
}

TEST_CASE("only the last ending is cut") {
    CHECK(ShownUndoDate("a.reg.reg") == "a/reg");
    CHECK(ShownUndoDate("a.regs") == "a/regs");
}

TEST_CASE("a dotted time without ending is shown as a date") {
    CHECK(DottedTimeAsDate("2009.05.14.16.03.27") == "2009/05/14/16:03:27");
    CHECK(DottedTimeAsDate("System") == "System");
    CHECK(DottedTimeAsDate("") == "");
}

TEST_CASE("an undo file's companion has its name with another ending") {
    CHECK(CompanionName("2009.05.14.16.03.27.reg") == "2009.05.14.16.03.27.branches");
    CHECK(CompanionName(R"(C:\a.reg\Undo\x.REG)") == R"(C:\a.reg\Undo\x.branches)");
    for (const char* other : {"", "x", "x.regs", "reg", "x.reg\\y"}) CHECK(CompanionName(other).empty());
}
