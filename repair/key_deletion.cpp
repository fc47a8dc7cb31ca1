#include "repair/key_deletion.h"

#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <string>

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

/// How many subkeys a key has; 0 where it does not tell.
DWORD CountSubkeys(HKEY key) {
    // A handle for deletion may not ask.
    CUniqueKey asked;
    DWORD count = 0;
    if (OpenKey(key, "", KEY_QUERY_VALUE, asked) != ERROR_SUCCESS) return 0;
    const LSTATUS result = ::RegQueryInfoKeyA(asked.Get(), nullptr, nullptr, nullptr, &count, nullptr,
                                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    return result == ERROR_SUCCESS ? count : 0;
}

/// What has been deleted below one key while the key itself is there.
struct Progress {
    std::optional<DWORD> expected;  // subkeys that it had at first, less the deleted; nothing: uncounted
    std::set<std::string> deleted;  // subkeys that somebody may make anew
    std::map<std::string, Progress> begun;  // subkeys that were tried and are still there
};

/// Watches one deletion for standing still. Only a key's first deletion is a change: somebody may make keys
/// anew as often as they are deleted, or new ones faster than they can be deleted.
class CDeletion {
public:
    [[nodiscard]] LSTATUS Delete(const OpenedKey& parent, const std::string& name) {
        Progress progress;
        return Delete(parent, name, &progress);
    }

private:
    /// @param progress  below the key; null for one that was made anew, where nothing is a change.
    [[nodiscard]] LSTATUS Delete(const OpenedKey& parent, const std::string& name, Progress* progress) {
        CUniqueKey key;
        const std::string path = parent.path.empty() ? name : JoinKeyPath(parent.path, name);
        if (OpenKeyItself(parent.key, name.c_str(), kDeletionAccess, key) == ERROR_ACCESS_DENIED)
            ForceKeyAccess(parent.root, path.c_str());
        if (key) {
            const LSTATUS emptied = DeleteSubkeys({key.Get(), parent.root, path}, progress);
            key.Reset();
            if (emptied != ERROR_SUCCESS) return emptied;
        }
        return DeleteKeyItself(parent.key, name.c_str());
    }

    [[nodiscard]] LSTATUS DeleteSubkeys(const OpenedKey& key, Progress* progress) {
        char name[kNameBytes + 1];
        for (;;) {
            const LSTATUS found = EnumSubkey(key.key, 0, name);
            if (found == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
            if (found != ERROR_SUCCESS) return found;
            if (progress != nullptr && !progress->expected.has_value())
                progress->expected = CountSubkeys(key.key);
            // Somebody may make a key anew in other letters.
            const std::string compared = InSmallLetters(name);
            const LSTATUS deleted = Delete(key, name, ProgressBelow(progress, compared));
            // There is no use in waiting for a key that no name leads to.
            if (deleted == ERROR_INVALID_NAME) return deleted;
            if (deleted == ERROR_FILE_NOT_FOUND && IsHidden(key.key, name)) return ERROR_INVALID_NAME;
            if (deleted == ERROR_SUCCESS && IsChange(progress, compared)) {
                m_standsStill = false;
                continue;
            }
            if (HasStoodStillTooLong()) return deleted;
            // A key that was made anew with much in it is not waited for at each of its subkeys.
            if (deleted != ERROR_SUCCESS || progress != nullptr) ::Sleep(kRetryPeriod);
        }
    }

    /// The progress below a subkey that is going to be deleted; null where its deletion will be no change.
    [[nodiscard]] Progress* ProgressBelow(Progress* progress, const std::string& name) {
        if (progress == nullptr || progress->deleted.contains(name)) return nullptr;
        return LeftFor(*progress) == 0 ? nullptr : &progress->begun[name];
    }

    /// Notes that a subkey has been deleted. @return whether that is a change.
    [[nodiscard]] bool IsChange(Progress* progress, const std::string& name) {
        if (progress == nullptr || progress->deleted.contains(name)) return false;
        progress->begun.erase(name);
        DWORD& left = LeftFor(*progress);
        if (left == 0) return false;
        --left;
        progress->deleted.insert(name);
        return true;
    }

    /// How many subkeys of a key may still be deleted for the first time: those that were there, and then so
    /// many of all that others make meanwhile.
    [[nodiscard]] DWORD& LeftFor(Progress& progress) {
        return progress.expected.value_or(0) > 0 ? *progress.expected : m_newcomersLeft;
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

    DWORD m_newcomersLeft = kMostNewcomers;
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
