#include "hives/backup_folder.h"

#include <windows.h>

#include "platform/folder_tree.h"
#include "platform/local_time.h"
#include "platform/owners.h"
#include "platform/program_folder.h"

namespace {

/// The folder of all backups; empty where our own is not known: it would be one in the root of the drive.
std::string AllBackups() {
    const std::string folder = ProgramFolder();
    return folder.empty() ? folder : folder + "\\Backup";
}

std::string ReplacedHivesFolder(const std::string& allBackups) { return allBackups + "\\System"; }

bool IsBackup(const WIN32_FIND_DATAA& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && entry.cFileName[0] != '.';
}

}  // namespace

std::string MakeBackupFolder() {
    const std::string all = AllBackups();
    if (all.empty()) return {};
    ::CreateDirectoryA(all.c_str(), nullptr);
    ::CreateDirectoryA(ReplacedHivesFolder(all).c_str(), nullptr);
    const std::string time = LocalTimeName();
    if (time.empty()) return {};
    std::string folder = all + "\\" + time;
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

std::string BackupFolder(const std::string& name) {
    const std::string all = AllBackups();
    return all.empty() ? all : all + "\\" + name;
}

std::vector<std::string> FindBackups() {
    std::vector<std::string> names;
    const std::string all = AllBackups();
    if (all.empty()) return names;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA((all + "\\*.*").c_str(), &entry));
    if (!search) return names;
    do {
        if (IsBackup(entry)) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
    return names;
}

std::string MakeReplacedHivesFolder() {
    const std::string all = AllBackups();
    if (all.empty()) return {};
    std::string folder = ReplacedHivesFolder(all);
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

bool DeleteBackup(const std::string& name) {
    const std::string folder = BackupFolder(name);
    return !folder.empty() && DeleteFolderTree(folder);
}
