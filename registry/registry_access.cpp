#include "registry/registry_access.h"

#include "registry/key_path_rules.h"

namespace {

constexpr int kFailuresInARow = 64;

/// How many values or subkeys a key tells to hold; none where it does not tell that either.
DWORD CountIn(HKEY key, CWalkEnd::Of what) {
    DWORD values = 0;
    DWORD subkeys = 0;
    const LSTATUS result = ::RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                                              &values, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) return 0;
    return what == CWalkEnd::Of::Values ? values : subkeys;
}

}  // namespace

bool CWalkEnd::HasFailedTooLong(HKEY key, DWORD index) {
    if (++m_failures < kFailuresInARow) return false;
    m_failures = 0;
    m_hasGivenUp = index >= CountIn(key, m_what);
    return m_hasGivenUp;
}

LSTATUS OpenKey(HKEY parent, const char* subkey, REGSAM access, CUniqueKey& key) {
    return ::RegOpenKeyExA(parent, subkey, 0, access, key.Receive());
}

LSTATUS EnumValue(HKEY key, DWORD index, ValueBuffers& value) {
    value.Clear();
    DWORD nameBytes = kNameBytes;
    const LSTATUS result = ::RegEnumValueA(key, index, value.name, &nameBytes, nullptr, nullptr,
                                           reinterpret_cast<BYTE*>(value.data), &value.dataBytes);
    value.nameBytes = result == ERROR_SUCCESS ? nameBytes : static_cast<DWORD>(std::strlen(value.name));
    return result;
}

bool CanOpenByName(const char* name, DWORD bytes) {
    if (bytes == 0 || std::strlen(name) != bytes) return false;
    if (std::strchr(name, '\\') == nullptr) return true;
    // In some code pages the second byte of a character may be the same.
    for (const char* place = name; *place != '\0'; place = ::CharNextA(place))
        if (*place == '\\') return false;
    return true;
}

LSTATUS EnumSubkey(HKEY key, DWORD index, char (&name)[kNameBytes + 1]) {
    std::memset(name, 0, sizeof name);
    DWORD nameBytes = kNameBytes;
    const LSTATUS result = ::RegEnumKeyExA(key, index, name, &nameBytes, nullptr, nullptr, nullptr, nullptr);
    return result == ERROR_SUCCESS && !CanOpenByName(name, nameBytes) ? ERROR_INVALID_NAME : result;
}

std::optional<std::string> FileTimeText(const FILETIME& time) {
    SYSTEMTIME utc{};
    if (::FileTimeToSystemTime(&time, &utc) == FALSE) return std::nullopt;
    return WriteTimeText({utc.wYear, utc.wMonth, utc.wDay, utc.wHour, utc.wMinute, utc.wSecond});
}

std::optional<std::string> QueryWriteTime(HKEY key) {
    FILETIME written{};
    const LSTATUS result = ::RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr, &written);
    return result == ERROR_SUCCESS ? FileTimeText(written) : std::nullopt;
}

std::string InSmallLetters(std::string name) {
    ::CharLowerBuffA(name.data(), static_cast<DWORD>(name.size()));
    return name;
}
