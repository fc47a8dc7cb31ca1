#include "hives/backup_folder.h"

#include <windows.h>

#include "platform/folder_tree.h"
#include "platform/local_time.h"
#include "platform/owners.h"
#include "platform/program_folder.h"

namespace {

std::string AllBackups() { return ProgramFolder() + "\\Backup"; }

bool IsBackup(const WIN32_FIND_DATAA& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && entry.cFileName[0] != '.';
}

}  // namespace

std::string MakeBackupFolder() {
    if (ProgramFolder().empty()) return {};
    ::CreateDirectoryA(AllBackups().c_str(), nullptr);
    MakeReplacedHivesFolder();
    const std::string time = LocalTimeName();
    if (time.empty()) return {};
    std::string folder = BackupFolder(time);
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

std::string BackupFolder(const std::string& name) { return AllBackups() + "\\" + name; }

std::vector<std::string> FindBackups() {
    std::vector<std::string> names;
    // Without a folder of our own the search would list whatever the drive's root has under that name.
    if (ProgramFolder().empty()) return names;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA(BackupFolder("*.*").c_str(), &entry));
    if (!search) return names;
    do {
        if (IsBackup(entry)) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
    return names;
}

std::string MakeReplacedHivesFolder() {
    std::string folder = BackupFolder("System");
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

bool DeleteBackup(const std::string& name) { return DeleteFolderTree(BackupFolder(name)); }
