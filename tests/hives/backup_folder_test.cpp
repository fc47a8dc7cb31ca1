#include "hives/backup_folder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <regex>

#include "platform/folder_tree.h"
#include "platform/program_folder.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

using Names = std::vector<std::string>;

SYSTEMTIME g_time{};

void WINAPI TellTime(SYSTEMTIME* time) { *time = g_time; }

/// Lets the system tell this local time, or none.
class CToldTime {
public:
    explicit CToldTime(const SYSTEMTIME& time)
        : m_hook("GetLocalTime", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&TellTime))) {
        g_time = time;
    }

private:
    CCallHook m_hook;
};

/// Records which folders the program has the system remove.
class CRemovals {
public:
    CRemovals() : m_hook("RemoveDirectoryA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Record))) {
        Asked().clear();
        s_remove = reinterpret_cast<RemoveProc>(reinterpret_cast<void*>(m_hook.Before()));
    }
    [[nodiscard]] static Names& Asked() {
        static Names asked;
        return asked;
    }

private:
    using RemoveProc = BOOL(WINAPI*)(LPCSTR);

    static BOOL WINAPI Record(LPCSTR path) {
        Asked().emplace_back(path);
        return s_remove(path);
    }

    static inline RemoveProc s_remove = nullptr;
    CCallHook m_hook;
};

constexpr SYSTEMTIME kTime{2009, 5, 4, 14, 16, 3, 7, 0};

}  // namespace

TEST_CASE("a new backup's folder is named by the local time, beside one for replaced hives") {
    const CBackupsFolder backups;
    const CToldTime time(kTime);
    CHECK(MakeBackupFolder() == ProgramFolder() + "\\Backup\\2009.05.14.16.03.07");
    CHECK(NamesIn(CBackupsFolder::Path()) == Names{"2009.05.14.16.03.07", "System"});
    CHECK(NamesIn(CBackupsFolder::Path() + "\\System").empty());
}

TEST_CASE("the time in a backup's name is the system's own") {
    const CBackupsFolder backups;
    const std::string folder = MakeBackupFolder();
    CHECK(std::regex_match(folder.substr(folder.rfind('\\') + 1),
                           std::regex(R"(\d{4}\.\d\d\.\d\d\.\d\d\.\d\d\.\d\d)")));
    CHECK(Exists(folder));
}

TEST_CASE("two backups in the same second share a folder, with what is in it") {
    const CBackupsFolder backups;
    const CToldTime time(kTime);
    const std::string first = MakeBackupFolder();
    WriteFileText(first + "\\MACHINE.A.bck", "first");
    const std::string old = CBackupsFolder::AddFile("System\\MACHINE.A.sys", "replaced");
    CHECK(MakeBackupFolder() == first);
    CHECK(FileText(first + "\\MACHINE.A.bck") == "first");
    CHECK(FileText(old) == "replaced");
}

TEST_CASE("without a time there is no folder for the backup") {
    const CBackupsFolder backups;
    const CToldTime none(SYSTEMTIME{});
    CHECK(MakeBackupFolder().empty());
    CHECK(NamesIn(CBackupsFolder::Path()) == Names{"System"});
}

TEST_CASE("backups are all folders, whatever their names, but for hidden ones") {
    const CBackupsFolder backups;
    for (const char* name : {"2009.05.14.16.03.07", "System", "no date", "a.b", "1.2.3.4.5.6.7.8"})
        CBackupsFolder::AddFolder(name);
    CBackupsFolder::AddFolder(".hidden");
    CBackupsFolder::AddFile("2010.01.01.00.00.00", "a file");
    Names found = FindBackups();
    std::ranges::sort(found);
    CHECK(found == Names{"1.2.3.4.5.6.7.8", "2009.05.14.16.03.07", "System", "a.b", "no date"});
}

TEST_CASE("without a folder of backups there is none") {
    const CBackupsFolder backups;
    CHECK(FindBackups().empty());
    CHECK_FALSE(Exists(CBackupsFolder::Path()));
}

TEST_CASE("deleting a backup takes all that is in it and nothing beside it") {
    const CBackupsFolder backups;
    const std::string chosen = CBackupsFolder::AddFolder("2009.05.14.16.03.07");
    const std::string neighbour = CBackupsFolder::AddFile("2009.05.14.16.03.07.txt", "file beside it");
    const std::string longer = CBackupsFolder::AddFolder("2009.05.14.16.03.071");
    const std::string other = CBackupsFolder::AddFile("2009.05.14.16.03.071\\MACHINE.A.bck", "other");
    CBackupsFolder::AddFile("2009.05.14.16.03.07\\MACHINE.A.bck", "a");
    CBackupsFolder::AddFolder("2009.05.14.16.03.07\\nested");
    CBackupsFolder::AddFolder("2009.05.14.16.03.07\\nested\\deep");
    const std::string readOnly = CBackupsFolder::AddFile("2009.05.14.16.03.07\\nested\\deep\\b", "b");
    ::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
    CHECK(DeleteBackup("2009.05.14.16.03.07"));
    CHECK_FALSE(Exists(chosen));
    for (const std::string& kept : {neighbour, longer, other}) CHECK(Exists(kept));
}

TEST_CASE("a backup with a file in use stays with that file") {
    const CBackupsFolder backups;
    const std::string chosen = CBackupsFolder::AddFolder("2009.05.14.16.03.07");
    const std::string used = CBackupsFolder::AddFile("2009.05.14.16.03.07\\MACHINE.A.bck", "a");
    const CUniqueFile file(::CreateFileA(used.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    CHECK_FALSE(DeleteBackup("2009.05.14.16.03.07"));
    CHECK(Exists(used));
}

TEST_CASE("deleting a tree leaves alone what a link in it leads to") {
    const CScratchFolder scratch;
    (void)scratch.AddFolder("target");
    const std::string kept = scratch.AddFile("target\\kept");
    const std::string folder = scratch.AddFolder("folder");
    const std::string inside = scratch.AddFile("folder\\file");
    const std::string link = scratch.AddFolderLink("folder\\link", scratch.Path() + "\\target");
    // Wine cannot remove the link itself, so that the folder is not empty at the end; Windows can.
    CHECK(DeleteFolderTree(folder) == !Exists(link));
    CHECK_FALSE(Exists(inside));
    CHECK(Exists(kept));
}

TEST_CASE("a link in a tree is removed itself, as a folder is") {
    const CScratchFolder scratch;
    const std::string target = scratch.AddFolder("target");
    (void)scratch.AddFolder("target\\inner");
    const std::string folder = scratch.AddFolder("folder");
    const std::string link = scratch.AddFolderLink("folder\\link", target);
    const CRemovals removals;
    (void)DeleteFolderTree(folder);
    CHECK(CRemovals::Asked() == Names{link, folder});  // Wine refuses the first
}

TEST_CASE("deleting a link to a folder leaves alone what is behind it") {
    const CScratchFolder scratch;
    const std::string target = scratch.AddFolder("target");
    const std::string kept = scratch.AddFile("target\\kept");
    const std::string link = scratch.AddFolderLink("link", target);
    (void)DeleteFolderTree(link);
    CHECK(Exists(kept));
}

TEST_CASE("only folders that are there are deleted as trees") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("file");
    CHECK_FALSE(DeleteFolderTree(file));
    CHECK(Exists(file));
    CHECK_FALSE(DeleteFolderTree(scratch.Path() + "\\gone"));
    (void)scratch.AddFolder("a");
    CHECK_FALSE(DeleteFolderTree(scratch.Path() + "\\?"));
    CHECK(Exists(scratch.Path() + "\\a"));
}
