#include "registry/key_tree.h"

#include <algorithm>

#include "registry/key_path_rules.h"
#include "registry/registry_access.h"

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

bool TreeIsEmpty(HKEY key, int level, CancelPoll poll) {
    if (!HoldsNoValue(key, poll)) return false;
    char name[kNameBytes + 1];
    CWalkEnd end(CWalkEnd::Of::Subkeys);
    for (DWORD index = 0;; ++index) {
        poll();
        const LSTATUS result = EnumSubkey(key, index, name);
        if (end.IsReached(key, index, result)) return !end.HasGivenUp();
        if (result != ERROR_SUCCESS || level >= kDeepestLevel) continue;
        CUniqueKey child;
        if (OpenKey(key, name, kReadAccess, child) != ERROR_SUCCESS) continue;
        if (!TreeIsEmpty(child.Get(), level + 1, poll)) return false;
    }
}

}  // namespace

bool KeyTreeIsEmpty(HKEY key, std::string_view path, CancelPoll poll) {
    // The level bounds the recursion where a link leads back to its own parent.
    const auto level = static_cast<int>(std::count(path.begin(), path.end(), '\\')) - 1;
    return TreeIsEmpty(key, level, poll);
}
