#include "registry/subkey_order.h"

#include <string>

#include "registry/letter_case_rules.h"

namespace {

bool StandsBefore(const char* one, const char* other) {
    while (*one != '\0' && UpperCase(*one) == UpperCase(*other)) {
        ++one;
        ++other;
    }
    return static_cast<unsigned char>(UpperCase(*one)) < static_cast<unsigned char>(UpperCase(*other));
}

}  // namespace

bool IsItsName(HKEY key, DWORD index, const char* name) {
    wchar_t stored[kNameBytes + 1];
    DWORD length = kNameBytes;
    if (::RegEnumKeyExW(key, index, stored, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return false;
    wchar_t read[kNameBytes + 1];
    const int characters = ::MultiByteToWideChar(CP_ACP, 0, name, -1, read, kNameBytes + 1);
    return characters > 0 && std::wstring_view(stored, length) == read;
}

bool CSubkeyOrder::IsFirst(HKEY key, DWORD index, const char* name) {
    // Subkeys come in the order of their names, so only one that falls out of it can have been there before.
    if (!StandsBefore(m_former, name) && !IsItsName(key, index, name)) return false;
    ::lstrcpynA(m_former, name, sizeof m_former);
    return true;
}
