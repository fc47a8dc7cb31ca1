#include "hives/restore.h"

#include <optional>
#include <vector>

#include "hives/backup_folder.h"
#include "hives/hive_list.h"
#include "platform/host_services.h"

namespace {

/// The files are listed before the first is touched: while hives are replaced, files come and go.
/// @return nothing when the search broke off.
std::optional<std::vector<std::string>> FindHiveFiles(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    entry.cFileName[0] = '\0';
    const CUniqueFind search(::FindFirstFileA((folder + "\\*.bck").c_str(), &entry));
    // Deliberate: a search that found nothing is no failure. Its cleared name is passed over, and the restore
    // of such a folder counts as one that went well.
    do {
        if (entry.cFileName[0] != '\0') names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
    if (search && ::GetLastError() != ERROR_NO_MORE_FILES) return std::nullopt;
    return names;
}

bool Exists(const std::string& path) { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

RestoreResult ResultOf(LSTATUS replaced) {
    if (replaced == ERROR_SUCCESS) return RestoreResult::Registered;
    return replaced == ERROR_ACCESS_DENIED ? RestoreResult::InUse : RestoreResult::NotReplaced;
}

/// Replacing takes the backup file away, so it works beside a copy, which becomes the backup file again.
RestoreResult ReplaceByCopy(HKEY hive, const std::string& backup, const std::string& copy,
                            const std::string& replaced) {
    if (::CopyFileA(backup.c_str(), copy.c_str(), FALSE) == FALSE) return RestoreResult::NotReplaced;
    const RestoreResult result =
        ResultOf(SystemActions().ReplaceHive(hive, backup.c_str(), replaced.c_str()));
    const bool isWhole = result == RestoreResult::Registered
                             ? ::CopyFileA(copy.c_str(), backup.c_str(), FALSE) != FALSE
                             : Exists(backup);
    if (isWhole) ::DeleteFileA(copy.c_str());  // otherwise it is all that is left of the backup
    return result;
}

RestoreResult RestoreHive(const std::string& folder, const std::string& name,
                          const std::string& replacedFolder) {
    const std::optional<HiveKey> hive = HiveOfBackupFile(name);
    CUniqueKey key;
    if (!hive || OpenHive(*hive, key) != ERROR_SUCCESS) return RestoreResult::Abandoned;
    const std::string replaced = replacedFolder + "\\" + WithEnding(name, ".sys");
    // The file that a former restore replaced is in use until the system has been restarted.
    if (Exists(replaced) && ::DeleteFileA(replaced.c_str()) == FALSE) return RestoreResult::InUse;
    const std::string inFolder = folder + "\\";
    return ReplaceByCopy(key.Get(), inFolder + name, inFolder + WithEnding(name, ".tmp"), replaced);
}

}  // namespace

RestoreResult RestoreHives(const std::string& folder) {
    EnableReplacePrivileges();
    const std::string replacedFolder = MakeReplacedHivesFolder();
    if (folder.empty() || replacedFolder.empty()) return RestoreResult::NotReplaced;
    const std::optional<std::vector<std::string>> names = FindHiveFiles(folder);
    if (!names.has_value()) return RestoreResult::NotReplaced;
    for (const std::string& name : *names) {
        const RestoreResult result = RestoreHive(folder, name, replacedFolder);
        if (result != RestoreResult::Registered) return result;
    }
    return RestoreResult::Registered;
}
