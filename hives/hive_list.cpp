#include "hives/hive_list.h"

#include "platform/privileges.h"
#include "registry/registry_access.h"

namespace {

constexpr char kHiveList[] = R"(SYSTEM\CurrentControlSet\Control\hivelist)";

/// A hive that lives in memory alone is listed with an empty text: its terminator is all there is.
constexpr DWORD kEmptyTextBytes = 1;

}  // namespace

bool CHiveList::Open() {
    m_next = 0;
    m_end = CWalkEnd(CWalkEnd::Of::Values);
    m_isComplete = false;
    return OpenKey(HKEY_LOCAL_MACHINE, kHiveList, kAllAccess, m_list) == ERROR_SUCCESS;
}

std::optional<ListedHive> CHiveList::Next() {
    for (;;) {
        ValueBuffers value;
        const DWORD index = m_next++;
        const LSTATUS result = EnumValue(m_list.Get(), index, value);
        m_isComplete = result == ERROR_NO_MORE_ITEMS;
        if (m_end.IsReached(m_list.Get(), index, result)) return std::nullopt;
        const bool hasFile = result == ERROR_SUCCESS && value.dataBytes > kEmptyTextBytes;
        if (hasFile && ParseHiveName(value.name).has_value()) return ListedHive{value.name, value.data};
    }
}

LSTATUS OpenHive(const HiveKey& hive, CUniqueKey& key) {
    const HKEY root = hive.root == HiveRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_USERS;
    // Asked for what is allowed and no particular right: to SAM and SECURITY nobody has more than a few.
    return OpenKey(root, hive.subkey.c_str(), MAXIMUM_ALLOWED, key);
}

bool OpenListedHive(const ListedHive& hive, CUniqueKey& key) {
    const std::optional<HiveKey> place = ParseHiveName(hive.name);
    return place.has_value() && OpenHive(*place, key) == ERROR_SUCCESS;
}

void EnableReplacePrivileges() {
    EnablePrivilege(SE_SHUTDOWN_NAME);
    EnablePrivilege(SE_BACKUP_NAME);
    EnablePrivilege(SE_RESTORE_NAME);
}
