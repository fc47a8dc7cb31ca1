#include "registry/file_reference.h"

#include <doctest/doctest.h>

#include <cstring>
#include <string>

#include "tests/support/scratch_folder.h"

namespace {

// What the fake query writes, and what it answers.
std::string g_folderText;
UINT g_answer = 0;
int g_asked = 0;
UINT g_offeredBytes = 0;

UINT WINAPI AnswerAsTold(LPSTR buffer, UINT size) {
    ++g_asked;
    g_offeredBytes = size;
    std::memcpy(buffer, g_folderText.c_str(), g_folderText.size() + 1);
    return g_answer;
}

bool IsMissingWithQuery(const std::string& path, const std::string& folderText, UINT answer) {
    g_folderText = folderText;
    g_answer = answer;
    g_asked = 0;
    return FileReferenceIsMissing(path, &AnswerAsTold);
}

}  // namespace

TEST_CASE("a file or folder that exists is not missing, and one that does not is") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("a.dll");
    CHECK_FALSE(FileReferenceIsMissing(file));
    CHECK_FALSE(FileReferenceIsMissing(scratch.Path()));
    CHECK_FALSE(FileReferenceIsMissing(scratch.Path() + "\\"));
    CHECK(FileReferenceIsMissing(scratch.Path() + "\\b.dll"));
    CHECK(FileReferenceIsMissing(scratch.Path() + "\\gone\\a.dll"));
    CHECK(FileReferenceIsMissing("C:\\gone"));
}

TEST_CASE("a path is cut behind .exe and tried again") {
    CHECK_FALSE(FileReferenceIsMissing(TheWindowsFolder() + "\\notepad.exe|x"));
    const CScratchFolder scratch;
    const std::string tool = scratch.AddFile("tool.exe");
    CHECK_FALSE(FileReferenceIsMissing(tool + "|x"));
    CHECK_FALSE(FileReferenceIsMissing(tool + " /run"));
    CHECK_FALSE(FileReferenceIsMissing(tool + "cutable"));
    CHECK(FileReferenceIsMissing(scratch.Path() + "\\other.exe|x"));
    CHECK(FileReferenceIsMissing(scratch.AddFile("lib.dll") + "|x"));
}

TEST_CASE("a path is also cut behind .EXE, but not behind a mixed spelling") {
    const CScratchFolder scratch;
    const std::string tool = scratch.Path() + "\\" + "tool";
    (void)scratch.AddFile("tool.exe");
    CHECK_FALSE(FileReferenceIsMissing(tool + ".EXE|x"));
    CHECK(FileReferenceIsMissing(tool + ".Exe|x"));
}

TEST_CASE("the first .exe counts, and a .EXE before it does not") {
    const CScratchFolder scratch;
    const std::string tool = scratch.AddFile("tool.exe");
    CHECK_FALSE(FileReferenceIsMissing(tool + "|x.exe|y"));
    CHECK(FileReferenceIsMissing(scratch.Path() + "\\tool.EXE|x.exe|y"));
}

TEST_CASE("an unexpanded Windows folder variable counts as missing while the Windows folder is known") {
    REQUIRE(Exists(TheWindowsFolder() + "\\notepad.exe"));
    CHECK(FileReferenceIsMissing("%SystemRoot%\\notepad.exe"));
    CHECK(FileReferenceIsMissing("%systemroot%\\notepad.exe"));
    CHECK(FileReferenceIsMissing("%SystemRoot%\\notepad.exe|x"));

    // Even where the folder's text in front of the path would make it exist.
    const CScratchFolder scratch;
    (void)scratch.AddFolder("%SystemRoot%");
    (void)scratch.AddFile("%SystemRoot%\\tool.exe");
    const std::string folder = scratch.Path() + "\\";
    CHECK(IsMissingWithQuery("%SystemRoot%\\tool.exe", folder, static_cast<UINT>(folder.size())));
    CHECK(g_asked == 1);
}

TEST_CASE("with the Windows folder unknown its text goes before the path, which is tried once more") {
    const CScratchFolder scratch;
    for (const char* spelling : {"%SystemRoot%", "%systemroot%"}) {
        CAPTURE(spelling);
        const std::string subfolder = scratch.AddFolder(std::string(spelling));
        const std::string tool = scratch.AddFile(spelling + std::string("\\tool.exe"));
        const std::string folder = scratch.Path() + "\\";
        const std::string path = std::string(spelling) + "\\tool.exe";
        CHECK_FALSE(IsMissingWithQuery(path, folder, 0));
        CHECK(g_offeredBytes == 100);
        CHECK_FALSE(IsMissingWithQuery(path + "|x", folder, 0));  // the copy that was cut behind .exe
        CHECK(IsMissingWithQuery(std::string(spelling) + "\\other.exe", folder, 0));
        CHECK(IsMissingWithQuery(path, "", 0));
        ::DeleteFileA(tool.c_str());
        ::RemoveDirectoryA(subfolder.c_str());
    }
}

TEST_CASE("the Windows folder is asked for only where its variable stands in a path that is not there") {
    const CScratchFolder scratch;
    const std::string folder = scratch.Path() + "\\";
    (void)scratch.AddFile("%SYSTEMROOT%.exe");
    CHECK(IsMissingWithQuery("%SYSTEMROOT%.exe", folder, 0));
    CHECK(IsMissingWithQuery("C:\\gone\\tool.exe", folder, 0));
    CHECK(g_asked == 0);
    CHECK_FALSE(IsMissingWithQuery(scratch.AddFile("%SystemRoot%.dll"), folder, 0));
    CHECK(g_asked == 0);
}

TEST_CASE("the Windows folder's text is the system's answer, or nothing where that is none or too long") {
    CHECK(WindowsFolder() == TheWindowsFolder());
    g_folderText = "C:\\W";
    g_answer = 4;
    CHECK(WindowsFolder(&AnswerAsTold) == "C:\\W");
    CHECK(g_offeredBytes == 100);
    for (UINT answer : {0U, 100U, 101U, 500U}) {
        g_answer = answer;
        CHECK(WindowsFolder(&AnswerAsTold).empty());
    }
}
