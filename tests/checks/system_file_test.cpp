// How the image of a service or driver is resolved, step by step.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "registry/file_reference.h"
#include "tests/support/scratch_folder.h"

namespace {

std::string SystemFile(const std::string& start) { return start + "\\kernel32.dll"; }

}  // namespace

TEST_CASE("service images: an empty text leads nowhere, a full path to its file") {
    const CScratchFolder scratch;
    CHECK_FALSE(SystemFileExists(""));
    CHECK(SystemFileExists(scratch.AddFile("a.sys")));
    CHECK(SystemFileExists(scratch.AddFile("with blanks in.sys")));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\gone.sys"));
}

TEST_CASE("service images: quotes are taken off, up to the last one") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.sys");
    CHECK(SystemFileExists("\"" + file + "\""));
    CHECK(SystemFileExists("\"" + file + "\" -k"));
    CHECK_FALSE(SystemFileExists("\"" + scratch.Path() + "\\gone.sys\""));
    CHECK_FALSE(SystemFileExists("\"" + file + "\" \"x.y\""));
    CHECK_FALSE(SystemFileExists("\"" + file));  // the only quote is also the last
    CHECK_FALSE(SystemFileExists("\""));
    CHECK(SystemFileExists("\"system32\\kernel32.dll\""));  // the steps behind see the inside
}

TEST_CASE("service images: arguments behind .exe are dropped") {
    const CScratchFolder scratch;
    const std::string tool = scratch.AddFile("tool.exe");
    CHECK(SystemFileExists(tool + " settings.ini"));
    CHECK(SystemFileExists(scratch.Path() + "\\TOOL.EXE settings.ini"));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\tool.Exe settings.ini"));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\tool.EXE x.exe y"));  // the lower-case one counts first
    CHECK(SystemFileExists("\"" + tool + " settings.ini\""));
}

TEST_CASE("service images: a leading system folder is the Windows folder's") {
    CHECK(SystemFileExists(SystemFile("system32")));
    CHECK(SystemFileExists(SystemFile("System32")));
    CHECK_FALSE(SystemFileExists(SystemFile("SYSTEM32")));
    CHECK_FALSE(SystemFileExists(SystemFile("\\system32")));
    CHECK_FALSE(SystemFileExists(SystemFile(" system32")));
    CHECK_FALSE(SystemFileExists("system32\\drivers\\vellumor-gone.sys"));
}

TEST_CASE("service images: a leading system root is the Windows folder") {
    CHECK(SystemFileExists(SystemFile("\\SystemRoot\\System32")));
    CHECK(SystemFileExists(SystemFile("\\systemroot\\system32")));
    CHECK_FALSE(SystemFileExists(SystemFile("\\SYSTEMROOT\\system32")));
    CHECK_FALSE(SystemFileExists(SystemFile("SystemRoot\\system32")));
}

TEST_CASE(
    "service images: the Windows folder's variable is replaced in two spellings, one of them at a time") {
    const CScratchVariable unset("SystemRoot", std::nullopt);  // so no other step can expand it
    CHECK(SystemFileExists(SystemFile("%systemroot%\\system32")));
    CHECK(SystemFileExists(SystemFile("%SystemRoot%\\system32")));
    CHECK_FALSE(SystemFileExists(SystemFile("%SYSTEMROOT%\\system32")));
    // With both spellings in a text only the one is replaced, else the first drive would be another.
    CHECK(SystemFileExists(SystemFile("%SystemRoot%%systemroot%\\system32")));
}

TEST_CASE("service images: what stands before the drive is dropped") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("y.sys");
    CHECK(SystemFileExists("\\??\\" + file));
    CHECK(SystemFileExists("anything " + file));
    CHECK_FALSE(SystemFileExists("\\??\\C:\\gone\\y.sys"));
    CHECK_FALSE(SystemFileExists("D:\\x " + file));  // the first drive counts
    CHECK_FALSE(SystemFileExists(":\\"));
    CHECK(SystemFileExists(SystemFile("\\??\\%systemroot%\\system32")));  // the variable is replaced before
}

TEST_CASE("service images: switches are cut off, first those behind a minus and then those behind a slash") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("y.sys");
    CHECK(SystemFileExists(file + " -k name.ext"));
    CHECK(SystemFileExists(file + " /k name.ext"));
    CHECK(SystemFileExists(file + " /a.b -c.d"));
    CHECK(SystemFileExists(file + " -a.b /c.d"));
    CHECK_FALSE(SystemFileExists(file + " k name.ext"));
    CHECK(SystemFileExists(scratch.AddFile("a-b.sys")));  // no blank before it
    (void)scratch.AddFile("a -b.sys");
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\a -b.sys"));
}

TEST_CASE("service images: an expansion is taken when it is longer than the text") {
    const CScratchVariable name("VELLUMOR", "kernel32.dll");  // 12 characters
    const CScratchVariable equal("0123456789", "kernel32.dll");
    const CScratchVariable shorter("012345678", "kernel32.dll");
    const CScratchVariable expandedLater("VELL", "%VELLUMOR%");
    CHECK(SystemFileExists("%VELLUMOR%"));
    CHECK_FALSE(SystemFileExists("%0123456789%"));  // as long as its value
    CHECK(SystemFileExists("%012345678%"));
    CHECK_FALSE(SystemFileExists("%VELL%"));
    CHECK_FALSE(SystemFileExists("%VELLUMOR_UNSET%"));
}

TEST_CASE("service images: an expansion is taken when it is shorter than 512 characters") {
    // The name's extension is cut to three letters behind, so that only the taking decides.
    const auto named = [](std::size_t length) { return "kernel32.dll" + std::string(length - 12, 'x'); };
    for (const std::size_t length : {510U, 511U, 512U, 513U}) {
        CAPTURE(length);
        const CScratchVariable value("VELLUMOR", named(length));
        CHECK(SystemFileExists("%VELLUMOR%") == (length < 512));
    }
}

TEST_CASE("service images: switches in an expansion belong to the path") {
    const CScratchFolder scratch;
    const CScratchVariable value("VELLUMOR", scratch.AddFile("a -b.sys"));
    CHECK(SystemFileExists("%VELLUMOR%"));
}

TEST_CASE("service images: a file with a longer extension is found by its short path") {
    const CScratchFolder scratch;
    CHECK(SystemFileExists(scratch.AddFile("page one.html")));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\page two.html"));
}

TEST_CASE("service images: the text is cut three letters behind its last dot") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.sys");
    CHECK(SystemFileExists(file + ",101"));
    CHECK(SystemFileExists(file + "\\2"));
    CHECK_FALSE(SystemFileExists(file + ",1.2"));
    CHECK(SystemFileExists(scratch.AddFile("b.c")));
    CHECK(SystemFileExists(scratch.AddFile("plain")));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\plai"));
}

TEST_CASE("service images: a bare name is searched on the search path, one with a folder only there") {
    const CScratchFolder scratch;
    CHECK(SystemFileExists("kernel32.dll"));
    CHECK(SystemFileExists("notepad.exe -k name.ext"));
    CHECK_FALSE(SystemFileExists("vellumor-gone.sys"));
    (void)scratch.AddFile("vellumor-gone.sys");
    {
        const CScratchVariable path("PATH", scratch.Path());
        CHECK(SystemFileExists("vellumor-gone.sys"));
    }
    CHECK_FALSE(SystemFileExists(SystemFile(scratch.Path())));
    CHECK_FALSE(SystemFileExists(scratch.Path() + "\\"));  // no name behind the last backslash
    CHECK(SystemFileExists(scratch.Path()));               // folders are found like files
}
