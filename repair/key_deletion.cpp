#include "repair/key_deletion.h"

#include <cstring>
#include <set>

#include "platform/owners.h"
#include "registry/key_link.h"
#include "registry/key_ownership.h"
#include "registry/key_path_rules.h"
#include "registry/registry_access.h"
#include "registry/subkey_order.h"

namespace {

constexpr DWORD kPatience = 10'000;  // milliseconds
constexpr DWORD kRetryPeriod = 20;   // milliseconds
constexpr DWORD kMostNewcomers = 1000;

/// How many subkeys of a key may be deleted before that counts as no change any more: what it has now, and
/// some that others make meanwhile. Somebody may make new ones faster than they can be deleted.
DWORD MostSubkeys(HKEY key) {
    DWORD count = 0;
    if (::RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return MAXDWORD;
    return count + kMostNewcomers;
}

/// Watches one deletion for standing still.
class CDeletion {
public:
    [[nodiscard]] LSTATUS Delete(const OpenedKey& parent, const std::string& name) {
        CUniqueKey key;
        const std::string path = parent.path.empty() ? name : JoinKeyPath(parent.path, name);
        if (OpenKeyItself(parent.key, name.c_str(), kDeletionAccess, key) == ERROR_ACCESS_DENIED)
            ForceKeyAccess(parent.root, path.c_str());
        if (key) {
            const LSTATUS emptied = DeleteSubkeys({key.Get(), parent.root, path});
            key.Reset();
            if (emptied != ERROR_SUCCESS) return emptied;
        }
        return DeleteKeyItself(parent.key, name.c_str());
    }

private:
    [[nodiscard]] LSTATUS DeleteSubkeys(const OpenedKey& key) {
        const DWORD mostSubkeys = MostSubkeys(key.key);
        std::set<std::string> deletedNames;
        char name[kNameBytes + 1];
        for (;;) {
            const LSTATUS found = EnumSubkey(key.key, 0, name);
            if (found == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
            if (found != ERROR_SUCCESS) return found;
            const LSTATUS deleted = Delete(key, name);
            // There is no use in waiting for a key that no name leads to.
            if (deleted == ERROR_INVALID_NAME) return deleted;
            if (deleted == ERROR_FILE_NOT_FOUND && IsHidden(key.key, name)) return ERROR_INVALID_NAME;
            // A key that somebody makes anew as often as it is deleted is no change either.
            if (deleted == ERROR_SUCCESS && deletedNames.size() < mostSubkeys &&
                deletedNames.insert(name).second) {
                m_standsStill = false;
                continue;
            }
            if (HasStoodStillTooLong()) return deleted;
            ::Sleep(kRetryPeriod);
        }
    }

    /// Whether the first subkey is still the one of that name, yet really has another one.
    [[nodiscard]] static bool IsHidden(HKEY key, const char* name) {
        char first[kNameBytes + 1];
        return EnumSubkey(key, 0, first) == ERROR_SUCCESS && std::strcmp(first, name) == 0 &&
               !IsItsName(key, 0, name);
    }

    [[nodiscard]] bool HasStoodStillTooLong() {
        const DWORD now = ::GetTickCount();
        if (!m_standsStill) {
            m_standsStill = true;
            m_standsStillSince = now;
        }
        return now - m_standsStillSince >= kPatience;
    }

    bool m_standsStill = false;
    DWORD m_standsStillSince = 0;  // milliseconds of the system's tick count
};

}  // namespace

LSTATUS DeleteKeyRecursive(const OpenedKey& parentKey, const std::string& subkeyName) {
    // Without a name, the parent itself would be deleted.
    return subkeyName.empty() ? ERROR_FILE_NOT_FOUND : CDeletion().Delete(parentKey, subkeyName);
}

bool KeyHoldsOneValueOnly(HKEY key) {
    ValueBuffers value;
    CWalkEnd end(CWalkEnd::Of::Values);
    DWORD count = 0;
    while (!end.IsReached(key, count, EnumValue(key, count, value))) ++count;
    char name[kNameBytes + 1];
    return count == 1 && EnumSubkey(key, 0, name) == ERROR_NO_MORE_ITEMS;
}
