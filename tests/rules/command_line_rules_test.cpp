#include "platform/command_line_rules.h"

#include <doctest/doctest.h>

TEST_CASE("a program is named in full by a quoted path from its drive on") {
    for (const char* line : {R"("C:\WINDOWS\regedit.exe")", R"("c:\a b\c.exe" /s "x")", R"("z:\x"y)"})
        CHECK(NamesProgramInFull(line));
}

TEST_CASE("every other program would be searched for") {
    for (const char* line : {"", "\"", "\"\"", "regedit.exe", R"("regedit.exe")", R"(C:\WINDOWS\regedit.exe)",
                             R"("C:regedit.exe")", R"("\regedit.exe")", R"("C:\")", R"("C:\Windows\" x)",
                             R"( "C:\x.exe")", R"("C:\x.exe)", R"("1:\x.exe")", R"("\\server\x.exe")"})
        CHECK_FALSE(NamesProgramInFull(line));
}
