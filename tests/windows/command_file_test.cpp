#include <doctest/doctest.h>

#include <windows.h>

#include <string>

#include "registry/file_reference.h"
#include "tests/support/scratch_folder.h"

TEST_CASE("an empty command leads nowhere") { CHECK_FALSE(CommandFileExists("")); }

TEST_CASE("a full path leads to its file") {
    const CScratchFolder scratch;
    CHECK(CommandFileExists(scratch.AddFile("a.dll")));
    CHECK(CommandFileExists(scratch.AddFile("with blanks in.txt")));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\b.dll"));
    CHECK_FALSE(CommandFileExists("C:\\gone\\a.dll"));
}

TEST_CASE("what stands behind .exe and a blank is dropped") {
    const CScratchFolder scratch;
    const std::string tool = scratch.AddFile("tool.exe");
    CHECK(CommandFileExists(tool + " /s"));
    CHECK(CommandFileExists(tool + " -k settings.ini"));
    CHECK(CommandFileExists(tool + " other.exe third.txt"));
    CHECK(CommandFileExists(scratch.Path() + "\\tool.EXE -k settings.ini"));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\other.exe -k settings.ini"));
}

TEST_CASE("arguments behind a mixed spelling of .exe are not dropped, nor those before a later .exe") {
    const CScratchFolder scratch;
    const std::string tool = scratch.Path() + "\\" + "tool";
    (void)scratch.AddFile("tool.exe");
    CHECK_FALSE(CommandFileExists(tool + ".Exe -k settings.ini"));
    CHECK_FALSE(CommandFileExists(tool + ".EXE x.exe y"));  // .exe is looked for first
    CHECK_FALSE(CommandFileExists(tool + ".exe\t-k settings.ini"));
}

TEST_CASE("text in quotes is what is looked for, up to the last quote") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.dll");
    const std::string tool = scratch.AddFile("tool.exe");
    CHECK(CommandFileExists("\"" + file + "\""));
    CHECK(CommandFileExists("\"" + file + "\" settings.ini"));
    CHECK(CommandFileExists("\"" + tool + "\" -k settings.ini"));
    CHECK_FALSE(CommandFileExists("\"" + file + "\" \"settings.ini\""));
    CHECK_FALSE(CommandFileExists(" \"" + file + "\" settings.ini"));  // the quote does not come first
    CHECK_FALSE(CommandFileExists("\"\""));
}

TEST_CASE("an opening quote without a second one leaves nothing to look for") {
    const CScratchFolder scratch;
    CHECK_FALSE(CommandFileExists("\""));
    CHECK_FALSE(CommandFileExists("\"" + scratch.AddFile("a.dll")));
    // The second quote goes with the arguments.
    CHECK_FALSE(CommandFileExists("\"" + scratch.AddFile("tool.exe") + " /s\""));
}

TEST_CASE("the text is cut four characters behind its last dot") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.dll");
    CHECK(CommandFileExists(file + ",-101"));
    CHECK(CommandFileExists(file + "\\2"));
    CHECK(CommandFileExists(file + " /s"));
    CHECK_FALSE(CommandFileExists(file + ",x.y"));
    CHECK(CommandFileExists(scratch.AddFile("b.c")));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\b.c /s"));
}

TEST_CASE("the last dot may stand in a folder's name, and then cuts the file's") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("v.1");
    const std::string file = scratch.AddFile("v.1\\file");
    CHECK_FALSE(CommandFileExists(file));
    (void)scratch.AddFile("v.1\\f");
    CHECK(CommandFileExists(file));
}

TEST_CASE("a text without a dot is not cut") {
    const CScratchFolder scratch;
    REQUIRE(scratch.Path().find('.') == std::string::npos);
    CHECK(CommandFileExists(scratch.AddFile("file")));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\fil"));
}

TEST_CASE("a file with a longer extension is found by its short path") {
    const CScratchFolder scratch;
    CHECK(CommandFileExists(scratch.AddFile("page one.html")));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\page two.html"));
}

TEST_CASE("folders are found like files") {
    const CScratchFolder scratch;
    CHECK(CommandFileExists(scratch.Path()));
    CHECK(CommandFileExists(scratch.AddFolder("folder")));
    CHECK(CommandFileExists(TheWindowsFolder()));
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\"));  // nothing stands behind the last backslash
    CHECK_FALSE(CommandFileExists("\\"));
}

TEST_CASE("a bare name is searched on the system's search path") {
    const CScratchFolder scratch;
    CHECK(CommandFileExists("notepad.exe"));
    CHECK(CommandFileExists("notepad.exe C:\\gone.txt"));
    CHECK(CommandFileExists("kernel32.dll"));
    CHECK(CommandFileExists("windows_tests.exe"));  // the program's own folder
    CHECK(CommandFileExists("system32"));           // a folder
    CHECK_FALSE(CommandFileExists("kernel32"));     // no extension is added
    CHECK_FALSE(CommandFileExists("vellumor-gone.dll"));
    (void)scratch.AddFile("vellumor-gone.dll");
    const CScratchVariable path("PATH", scratch.Path());
    CHECK(CommandFileExists("vellumor-gone.dll"));
}

TEST_CASE("a name with a folder is searched in that folder only") {
    const CScratchFolder scratch;
    CHECK_FALSE(CommandFileExists(scratch.Path() + "\\notepad.exe"));
    (void)scratch.AddFolder("sub");
    (void)scratch.AddFile("sub\\a.dll");
    CHECK_FALSE(CommandFileExists("sub\\a.dll"));
    char before[MAX_PATH];
    REQUIRE(::GetCurrentDirectoryA(sizeof before, before) != 0);
    ::SetCurrentDirectoryA(scratch.Path().c_str());
    CHECK(CommandFileExists("sub\\a.dll"));
    ::SetCurrentDirectoryA(before);
}

TEST_CASE("a found path that is longer than the buffer for it is found all the same") {
    const CScratchFolder scratch;
    std::string folder(100, 'd');
    (void)scratch.AddFolder(folder);
    folder += "\\" + std::string(80, 'd');
    (void)scratch.AddFolder(folder);
    const std::size_t length = scratch.Path().size() + folder.size() + 2;
    const std::string file = scratch.AddFile(folder + "\\" + std::string(257 - length - 4, 'f') + ".dll");
    REQUIRE(file.size() == 257);
    CHECK(ModuleFileExists(file));  // asks for the long path
    CHECK(CommandFileExists(file));
}
