#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "platform/folder_tree.h"
#include "platform/owners.h"
#include "platform/program_folder.h"
#include "platform/text.h"
#include "tests/support/scratch_folder.h"

TEST_CASE("the program's folder is the one that holds its executable") {
    const std::string folder = ProgramFolder();
    CHECK(folder.back() != '\\');
    CHECK(Exists(folder + "\\windows_tests.exe"));
    std::string command = ::GetCommandLineA();
    if (command.front() == '"') command.erase(0, 1);
    CHECK(command.starts_with(folder + "\\windows_tests.exe"));
}

TEST_CASE("a text that is not among the resources is empty") { CHECK(LoadText(60'000).empty()); }

TEST_CASE("everything in a folder is deleted, and the folder stays") {
    const CScratchFolder scratch;
    const std::string folder = scratch.AddFolder("folder");
    const std::string neighbour = scratch.AddFile("neighbour.txt");
    (void)scratch.AddFile("folder\\file");
    (void)scratch.AddFile("folder\\file.with.dots.txt");
    (void)scratch.AddFolder("folder\\empty");
    (void)scratch.AddFolder("folder\\sub");
    (void)scratch.AddFolder("folder\\sub\\deep");
    const std::string readOnly = scratch.AddFile("folder\\sub\\deep\\read-only");
    ::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string hidden = scratch.AddFile("folder\\hidden");
    ::SetFileAttributesA(hidden.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    DeleteFolderContents(folder);
    CHECK(Exists(folder));
    CHECK(Exists(neighbour));
    CHECK(::RemoveDirectoryA(folder.c_str()) != FALSE);  // refused for a folder that is not empty
}

TEST_CASE("a file in use stays, and the others are deleted") {
    const CScratchFolder scratch;
    const std::string used = scratch.AddFile("b");
    const std::string before = scratch.AddFile("a");
    const std::string behind = scratch.AddFile("c");
    {
        const CUniqueFile file(
            ::CreateFileA(used.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        REQUIRE(static_cast<bool>(file));
        DeleteFolderContents(scratch.Path());
        CHECK(Exists(used));
    }
    CHECK_FALSE(Exists(before));
    CHECK_FALSE(Exists(behind));
}

TEST_CASE("a folder that is itself a link is left alone with what is behind it") {
    const CScratchFolder scratch;
    const std::string target = scratch.AddFolder("target");
    const std::string file = scratch.AddFile("target\\file");
    const std::string link = scratch.AddFolderLink("link", target);
    DeleteFolderContents(link);
    CHECK(Exists(file));
    CHECK(Exists(link));
}

TEST_CASE("what a link in the folder leads to is left alone") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("target");
    const std::string kept = scratch.AddFile("target\\kept.txt");
    const std::string folder = scratch.AddFolder("folder");
    const std::string link = scratch.AddFolderLink("folder\\link", scratch.Path() + "\\target");
    REQUIRE(Exists(link + "\\kept.txt"));
    DeleteFolderContents(folder);
    CHECK(Exists(kept));
}

TEST_CASE("a folder that does not exist is no error") {
    DeleteFolderContents("C:\\gone\\folder");
    CHECK_FALSE(Exists("C:\\gone"));
}
