#include "registry/key_tree.h"

#include <algorithm>

#include "registry/key_link.h"
#include "registry/key_path_rules.h"
#include "registry/registry_access.h"
#include "registry/subkey_order.h"

namespace {

bool HoldsNoValue(HKEY key, CancelPoll poll) {
    ValueBuffers value;
    CWalkEnd end(CWalkEnd::Of::Values);
    for (DWORD index = 0;; ++index) {
        poll();
        const LSTATUS result = EnumValue(key, index, value);
        // Looked at before the result: a call that fails may still have delivered something.
        if (value.data[0] != '\0' || value.name[0] != '\0') return false;
        // A key that cannot be read may hold anything.
        if (end.IsReached(key, index, result)) return !end.HasGivenUp();
    }
}

/// One test of a tree. The level bounds the recursion.
class CTreeTest {
public:
    explicit CTreeTest(CancelPoll poll) : m_poll(poll) {}

    [[nodiscard]] bool IsEmpty(HKEY key, int level) {
        if (!HoldsNoValue(key, m_poll)) return false;
        char name[kNameBytes + 1];
        CWalkEnd end(CWalkEnd::Of::Subkeys);
        CSubkeyOrder order;
        for (DWORD index = 0;; ++index) {
            m_poll();
            const LSTATUS result = EnumSubkey(key, index, name);
            if (end.IsReached(key, index, result)) return !end.HasGivenUp();
            if (result != ERROR_SUCCESS || !order.IsFirst(key, index, name)) continue;
            // What is not looked at may hold anything.
            if (level >= kDeepestLevel || !SubkeyIsEmpty(key, name, level + 1)) return false;
        }
    }

private:
    [[nodiscard]] bool SubkeyIsEmpty(HKEY parent, const char* name, int level) {
        CUniqueKey child;
        if (OpenKeyItself(parent, name, kReadAccess, child) != ERROR_SUCCESS) return true;
        if (IsEmpty(child.Get(), level)) return true;
        // A link's own value tells where it leads, and counts for nothing.
        if (!MayBeLink(child.Get())) return false;
        CUniqueKey target;
        if (OpenKey(parent, name, kReadAccess, target) != ERROR_SUCCESS) return true;
        if (IsSameKey(child.Get(), target.Get())) return false;  // it only pretends to be a link
        return !m_links.MayFollow(child.Get(), target.Get()) || IsEmpty(target.Get(), level);
    }

    CancelPoll m_poll;
    CFollowedLinks m_links;
};

}  // namespace

bool KeyTreeIsEmpty(HKEY key, std::string_view path, CancelPoll poll) {
    const auto level = static_cast<int>(std::count(path.begin(), path.end(), '\\')) - 1;
    return CTreeTest(poll).IsEmpty(key, level);
}
