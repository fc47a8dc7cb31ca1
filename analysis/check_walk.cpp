#include "analysis/check_walk.h"

#include <cstring>

CUniqueKey OpenForAll(HKEY parent, const char* subkey) {
    CUniqueKey key;
    if (OpenKey(parent, subkey, kAllAccess, key) != ERROR_SUCCESS) return {};
    return key;
}

bool NextSubkey(HKEY key, DWORD index, const SubkeyWalk& walk, char (&name)[kNameBytes + 1],
                FILETIME& written) {
    std::memset(name, 0, sizeof name);
    DWORD nameBytes = walk.nameBytes;
    const LSTATUS result = ::RegEnumKeyExA(key, index, name, &nameBytes, nullptr, nullptr, nullptr, &written);
    if (result != ERROR_SUCCESS) name[0] = '\0';
    return !EndsWalk(result);
}

bool PathIsMissing(const char* path) { return ::GetFileAttributesA(path) == INVALID_FILE_ATTRIBUTES; }
