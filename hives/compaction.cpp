#include "hives/compaction.h"

#include <optional>

#include "hives/drive_map.h"
#include "hives/hive_list.h"
#include "platform/host_services.h"

namespace {

// What stands beside a hive file: the compact file, which the system takes; a copy of it, which stays to be
// measured; the hive's file before.
constexpr char kCompact[] = ".tmp";
constexpr char kCompactCopy[] = ".pck";
constexpr char kBefore[] = ".bak";

/// The size of a file, also of one that the system keeps open; nothing when there is none.
std::optional<std::uint64_t> FindFileSize(const std::string& path) {
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA(path.c_str(), &entry));
    if (!search) return std::nullopt;
    return std::uint64_t{entry.nFileSizeHigh} << 32 | entry.nFileSizeLow;
}

bool DeleteIfFound(const std::string& path) {
    return !FindFileSize(path) || ::DeleteFileA(path.c_str()) != FALSE;
}

bool CompactHive(const ListedHive& hive, const CDriveMap& drives) {
    const std::optional<std::string> file = drives.FilePath(hive.devicePath);
    CUniqueKey key;
    if (!file || !OpenListedHive(hive, key)) return false;
    const std::string compact = *file + kCompact;
    if (SystemActions().SaveHive(key.Get(), compact.c_str()) != ERROR_SUCCESS) return false;
    if (FindFileSize(compact) && ::CopyFileA(compact.c_str(), (*file + kCompactCopy).c_str(), FALSE) == FALSE)
        return false;
    return SystemActions().ReplaceHive(key.Get(), compact.c_str(), (*file + kBefore).c_str()) ==
           ERROR_SUCCESS;
}

}  // namespace

bool DeleteFormerCompaction() {
    const CDriveMap drives;
    CHiveList hives;
    if (!hives.Open()) return true;  // there is nothing to compact either, which ends the compaction later
    while (const std::optional<ListedHive> hive = hives.Next()) {
        const std::optional<std::string> file = drives.FilePath(hive->devicePath);
        if (!file) continue;
        if (!DeleteIfFound(*file + kCompact) || !DeleteIfFound(*file + kBefore)) return false;
    }
    return true;
}

bool CompactHives() {
    EnableReplacePrivileges();
    const CDriveMap drives;
    CHiveList hives;
    if (!hives.Open()) return false;
    while (const std::optional<ListedHive> hive = hives.Next())
        if (!CompactHive(*hive, drives)) return false;
    return hives.IsComplete();
}

std::vector<CompactedHive> FindCompactedHives() {
    std::vector<CompactedHive> found;
    const CDriveMap drives;
    CHiveList hives;
    if (!hives.Open()) return found;
    while (const std::optional<ListedHive> hive = hives.Next()) {
        const std::optional<std::string> file = drives.FilePath(hive->devicePath);
        if (!file) continue;
        const std::optional<std::uint64_t> after = FindFileSize(*file + kCompactCopy);
        const std::optional<std::uint64_t> before = FindFileSize(*file + kBefore);
        if (after && before) found.push_back({*file, *before, *after});
    }
    return found;
}
