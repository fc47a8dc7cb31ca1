#include <doctest/doctest.h>

#include <windows.h>

#include <string>

#include "registry/file_reference.h"
#include "tests/support/scratch_folder.h"

// The Windows folder's text is shorter than "%systemroot%", so the general expansion, which is only taken
// where it makes the text longer, does not stand in for the replacements that these tests are about.

TEST_CASE("%systemroot% and %windir% stand for the Windows folder, whatever the environment says") {
    const CScratchVariable root("SystemRoot", "C:\\gone");
    const CScratchVariable directory("windir", "C:\\gone");
    CHECK(CommandFileExists("%systemroot%\\notepad.exe"));
    CHECK(CommandFileExists("%windir%\\notepad.exe"));
    CHECK(CommandFileExists("%windir%\\notepad.exe /s"));
    CHECK(CommandFileExists("\"%systemroot%\\notepad.exe\""));
    CHECK_FALSE(CommandFileExists("%systemroot%\\vellumor-gone.exe"));
}

TEST_CASE("%SystemRoot% stands for what the environment says") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("r");
    (void)scratch.AddFile("r\\a.dll");
    const CScratchVariable root("SystemRoot", "r");
    CHECK(CommandFileExists(scratch.Path() + "\\%SystemRoot%\\a.dll"));
    CHECK_FALSE(CommandFileExists("%SystemRoot%\\notepad.exe"));
}

TEST_CASE("an unset %SystemRoot% stays as it is") {
    const CScratchFolder scratch;
    const CScratchVariable root("SystemRoot", std::nullopt);
    (void)scratch.AddFolder("%SystemRoot%");
    CHECK(CommandFileExists(scratch.AddFile("%SystemRoot%\\a.dll")));
    CHECK(CommandFileExists("%systemroot%\\notepad.exe"));
}

TEST_CASE("letter case tells the variables apart") {
    for (const char* text : {"%SYSTEMROOT%\\notepad.exe", "%Systemroot%\\notepad.exe"}) {
        CAPTURE(text);
        CHECK_FALSE(CommandFileExists(text));
    }
    const CScratchVariable directory("windir", "w");
    CHECK_FALSE(CommandFileExists("%WinDir%\\notepad.exe"));
    CHECK_FALSE(CommandFileExists("%WINDIR%\\notepad.exe"));
}

TEST_CASE("every occurrence of %SystemRoot% is replaced") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("r");
    (void)scratch.AddFolder("r\\r");
    (void)scratch.AddFile("r\\r\\a.dll");
    const CScratchVariable root("SystemRoot", "r");
    CHECK(CommandFileExists(scratch.Path() + "\\%SystemRoot%\\%SystemRoot%\\a.dll"));
}

TEST_CASE("every occurrence of %systemroot% and %windir% is replaced") {
    // The second one ends up behind the extension. Left over, it would shrink in the general expansion so
    // much that this, which alone knows %VELLUMOR%, would not be taken.
    const CScratchFolder scratch;
    (void)scratch.AddFolder("a-name-longer-than-the-variable");
    (void)scratch.AddFile("a-name-longer-than-the-variable\\a.dll");
    const CScratchVariable folder("VELLUMOR_FOLDER", "a-name-longer-than-the-variable");
    const std::string climb = "\\.." + scratch.Path().substr(2) + "\\%VELLUMOR_FOLDER%\\a.dll";
    const CScratchVariable root("SystemRoot", "r");
    const CScratchVariable directory("windir", "w");
    for (const std::string token : {"%systemroot%", "%windir%"}) {
        CAPTURE(token);
        std::string tail;
        for (int count = 0; count < 3; ++count) tail += token;
        CHECK(CommandFileExists(token + climb));
        CHECK(CommandFileExists(token + climb + tail));
    }
}

TEST_CASE("the variables are replaced in order: what a later one brings is not searched for an earlier one") {
    {
        const CScratchVariable root("SystemRoot", "%windir%");
        CHECK(CommandFileExists("%SystemRoot%\\notepad.exe"));
    }
    const CScratchVariable root("SystemRoot", "%systemroot%");
    CHECK_FALSE(CommandFileExists("%SystemRoot%\\notepad.exe"));
}

TEST_CASE("a quote that a variable brings is taken off like any other") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("a.dll");
    const CScratchVariable root("SystemRoot", "\"" + scratch.Path());
    CHECK(CommandFileExists("%SystemRoot%\\a.dll\" settings.ini"));
}

TEST_CASE("other variables are expanded where that makes the text longer") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("a.dll");
    const CScratchVariable folder("VELLUMOR_X", scratch.Path());
    REQUIRE(scratch.Path().size() > std::string("%VELLUMOR_X%").size());
    CHECK(CommandFileExists("%VELLUMOR_X%\\a.dll"));
    CHECK(CommandFileExists("\"%VELLUMOR_X%\\a.dll\" settings.ini"));
    CHECK(CommandFileExists("%vellumor_x%\\a.dll"));  // names of variables are not case-sensitive
    CHECK_FALSE(CommandFileExists("%VELLUMOR_X%\\b.dll"));
    CHECK_FALSE(CommandFileExists("%VELLUMOR_UNKNOWN%\\a.dll"));
}

TEST_CASE("an expansion that leaves the text as long or makes it shorter is not taken") {
    const CScratchFolder scratch;
    for (const std::string name : {"abc", "abcd", "abcde"}) {
        CAPTURE(name);
        (void)scratch.AddFolder(name);
        (void)scratch.AddFile(name + "\\a.dll");
        const CScratchVariable variable("VX", name);  // "%VX%" has four characters
        CHECK(CommandFileExists(scratch.Path() + "\\%VX%\\a.dll") == (name.size() > 4));
    }
}

TEST_CASE("an expansion of 511 characters is taken and one of 512 is not") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("a.dll");
    const CScratchVariable folder("VELLUMOR_X", scratch.Path());
    const std::string known = scratch.Path() + "\\a.dll";
    for (const std::size_t length : {500U, 511U, 512U, 513U, 600U}) {
        CAPTURE(length);
        const CScratchVariable filler("VELLUMOR_FILLER", std::string(length - known.size(), 'f'));
        CHECK(CommandFileExists("%VELLUMOR_X%\\a.dll%VELLUMOR_FILLER%") == (length < 512));
    }
}
