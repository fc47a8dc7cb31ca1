#include "hives/backup.h"

#include "hives/hive_list.h"
#include "platform/host_services.h"
#include "platform/privileges.h"

namespace {

bool BackupHive(const ListedHive& listed, const std::string& folder) {
    const std::optional<HiveKey> hive = ParseHiveName(listed.name);
    if (!hive) return false;
    CUniqueKey key;
    if (OpenHive(*hive, key) != ERROR_SUCCESS) return false;
    const std::optional<std::string> name = BackupFileName(*hive);
    if (!name) return false;
    return SystemActions().SaveHive(key.Get(), (folder + "\\" + *name).c_str()) == ERROR_SUCCESS;
}

}  // namespace

void EnableBackupPrivilege() { EnablePrivilege(SE_BACKUP_NAME); }

bool BackupHives(const std::string& folder, const std::function<void()>& saved) {
    CHiveList hives;
    if (!hives.Open()) return false;
    while (const std::optional<ListedHive> hive = hives.Next()) {
        if (!BackupHive(*hive, folder)) return false;
        saved();
    }
    return hives.IsComplete();
}
