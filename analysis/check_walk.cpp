#include "analysis/check_walk.h"

#include <cstring>

#include "registry/key_path.h"

CheckArea AreaAt(const char* path) {
    const char* subkey = std::strchr(path + 1, '\\');
    return {SplitKeyPath(path).value().root, subkey != nullptr ? subkey + 1 : "", path};
}

CUniqueKey OpenForAll(HKEY parent, const char* subkey) {
    CUniqueKey key;
    if (OpenKey(parent, subkey, kAllAccess, key) != ERROR_SUCCESS) return {};
    return key;
}

bool NextSubkey(HKEY key, DWORD index, const SubkeyWalk& walk, CWalkEnd& end, char (&name)[kNameBytes + 1],
                FILETIME& written) {
    std::memset(name, 0, sizeof name);
    DWORD nameBytes = walk.nameBytes;
    const LSTATUS result = ::RegEnumKeyExA(key, index, name, &nameBytes, nullptr, nullptr, nullptr, &written);
    if (result != ERROR_SUCCESS || !CanOpenByName(name, nameBytes)) name[0] = '\0';
    return !end.IsReached(key, index, result);
}

bool PathIsMissing(const char* path) { return ::GetFileAttributesA(path) == INVALID_FILE_ATTRIBUTES; }
