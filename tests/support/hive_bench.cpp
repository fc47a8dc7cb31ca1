#include "tests/support/hive_bench.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "platform/folder_tree.h"
#include "platform/privileges.h"
#include "platform/program_folder.h"

namespace {

std::string PathAside() { return CBackupsFolder::Path() + " aside"; }

void MoveFolder(const std::string& from, const std::string& to) {
    if (Exists(from)) REQUIRE(::MoveFileA(from.c_str(), to.c_str()) != FALSE);
}

CUniqueHandle OwnToken() {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, token.Receive()) != FALSE);
    return token;
}

}  // namespace

CBackupsFolder::CBackupsFolder() { MoveFolder(Path(), PathAside()); }

CBackupsFolder::~CBackupsFolder() {
    (void)DeleteFolderTree(Path());
    MoveFolder(PathAside(), Path());
}

std::string CBackupsFolder::Path() { return ProgramFolder() + "\\Backup"; }

std::string CBackupsFolder::AddFolder(const std::string& name) {
    ::CreateDirectoryA(Path().c_str(), nullptr);
    const std::string folder = Path() + "\\" + name;
    ::CreateDirectoryA(folder.c_str(), nullptr);
    REQUIRE(Exists(folder));
    return folder;
}

std::string CBackupsFolder::AddFile(const std::string& name, const std::string& text) {
    ::CreateDirectoryA(Path().c_str(), nullptr);
    const std::string file = Path() + "\\" + name;
    WriteFileText(file, text);
    REQUIRE(Exists(file));
    return file;
}

void CHiveBench::AddMachines(std::initializer_list<const char*> names) {
    for (const char* name : names) hives.AddMachine(name);
    actions.hiveFiles = hives.Files();
}

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA((folder + "\\*").c_str(), &entry));
    for (BOOL more = search ? TRUE : FALSE; more != FALSE; more = ::FindNextFileA(search.Get(), &entry)) {
        const std::string name = entry.cFileName;
        if (name != "." && name != "..") names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

bool IsPrivilegeEnabled(const char* privilege) {
    PRIVILEGE_SET asked{};
    asked.PrivilegeCount = 1;
    asked.Control = PRIVILEGE_SET_ALL_NECESSARY;
    REQUIRE(::LookupPrivilegeValueA(nullptr, privilege, &asked.Privilege[0].Luid) != FALSE);
    BOOL isEnabled = FALSE;
    REQUIRE(::PrivilegeCheck(OwnToken().Get(), &asked, &isEnabled) != FALSE);
    return isEnabled != FALSE;
}

void DisablePrivilege(const char* privilege) {
    REQUIRE(SetTokenPrivilege(OwnToken().Get(), privilege, false));
    REQUIRE_FALSE(IsPrivilegeEnabled(privilege));
}
