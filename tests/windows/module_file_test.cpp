#include <doctest/doctest.h>

#include <string>

#include "registry/file_reference.h"
#include "tests/support/scratch_folder.h"

TEST_CASE("an empty module leads nowhere") { CHECK_FALSE(ModuleFileExists("")); }

TEST_CASE("a value that does not end in a three-letter extension is no file name and counts as found") {
    const CScratchFolder scratch;
    const std::string gone = scratch.Path() + "\\gone";
    for (const std::string ending : {"", ".c", ".dl", ".html", ".dll ", ".dll\"", ".dll,-1", "."}) {
        CAPTURE(ending);
        CHECK(ModuleFileExists(gone + ending));
    }
    CHECK_FALSE(ModuleFileExists(gone + ".dll"));
    CHECK(ModuleFileExists("plain text"));
    CHECK_FALSE(ModuleFileExists("\"" + gone + ".dll\".abc"));
}

TEST_CASE("a module is found by its full path or on the system's search path") {
    const CScratchFolder scratch;
    CHECK(ModuleFileExists(scratch.AddFile("a.dll")));
    CHECK(ModuleFileExists("kernel32.dll"));
    CHECK_FALSE(ModuleFileExists("vellumor-gone.dll"));
    CHECK_FALSE(ModuleFileExists(scratch.Path() + "\\kernel32.dll"));
}

TEST_CASE(
    "a module's arguments behind .exe and a blank are dropped, as they are spelled before lower-casing") {
    const CScratchFolder scratch;
    const std::string tool = scratch.Path() + "\\" + "tool";
    (void)scratch.AddFile("tool.exe");
    CHECK(ModuleFileExists(tool + ".exe -k gone.dll"));
    CHECK(ModuleFileExists(tool + ".EXE -k gone.dll"));
    CHECK_FALSE(ModuleFileExists(tool + ".Exe -k gone.dll"));
}

TEST_CASE("a module's Windows folder variable counts in any spelling, whatever the environment says") {
    const CScratchVariable root("SystemRoot", "C:\\gone");
    for (const char* text : {"%systemroot%\\notepad.exe", "%SystemRoot%\\notepad.exe",
                             "%SYSTEMROOT%\\NOTEPAD.EXE", "%SYSTEMroot%\\Notepad.exe"}) {
        CAPTURE(text);
        CHECK(ModuleFileExists(text));
    }
    CHECK_FALSE(ModuleFileExists("%SystemRoot%\\vellumor-gone.exe"));
}

TEST_CASE("a module's %windir% is left to the general expansion") {
    const CScratchFolder scratch;
    {
        const CScratchVariable directory("windir", "w");
        CHECK_FALSE(ModuleFileExists("%windir%\\notepad.exe"));
    }
    (void)scratch.AddFile("a.dll");
    const CScratchVariable directory("windir", scratch.Path());
    CHECK(ModuleFileExists("%windir%\\a.dll"));
}

TEST_CASE("a module in quotes is what stands between the first and the last of them") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.dll");
    CHECK(ModuleFileExists("\"" + file + "\" x.dll"));
    CHECK_FALSE(ModuleFileExists("\"" + file + "\" \"y.txt\" x.dll"));
    CHECK(ModuleFileExists("\"" + file + "\".abc"));
    CHECK_FALSE(ModuleFileExists("\"" + file));
}

TEST_CASE("a module is cut behind its extension and not looked up by its short path") {
    const CScratchFolder scratch;
    const std::string page = scratch.AddFile("page one.html");
    CHECK(CommandFileExists("\"" + page + "\".abc"));
    CHECK_FALSE(ModuleFileExists("\"" + page + "\".abc"));
    const std::string file = scratch.AddFile("a.dll");
    CHECK(ModuleFileExists("\"" + file + ",-1\".abc"));
}

TEST_CASE("a module's other variables are expanded where that makes the text longer") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("abcd");
    (void)scratch.AddFile("abcd\\a.dll");
    {
        const CScratchVariable folder("VELLUMOR_X", scratch.Path() + "\\abcd");
        CHECK(ModuleFileExists("%VELLUMOR_X%\\a.dll"));
    }
    const CScratchVariable folder("VX", "abcd");
    CHECK_FALSE(ModuleFileExists(scratch.Path() + "\\%VX%\\a.dll"));
}
