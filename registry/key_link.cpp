#include "registry/key_link.h"

#include <vector>

namespace {

// Keys by their handles: the documented registry calls know names only, and by a link's name they reach the
// key behind it.
constexpr int kKeyNameInformation = 3;
using NtDeleteKeyProc = LONG(WINAPI*)(HANDLE key);
using NtQueryKeyProc = LONG(WINAPI*)(HANDLE key, int what, void* answer, ULONG size, ULONG* needed);
using StatusToErrorProc = ULONG(WINAPI*)(LONG status);

template <class Proc>
Proc SystemProc(const char* name) {
    const HMODULE library = ::GetModuleHandleA("ntdll.dll");
    return reinterpret_cast<Proc>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

LSTATUS DeleteOpenedKey(HKEY key) {
    static const auto deleteKey = SystemProc<NtDeleteKeyProc>("NtDeleteKey");
    static const auto toError = SystemProc<StatusToErrorProc>("RtlNtStatusToDosError");
    if (deleteKey == nullptr || toError == nullptr) return ERROR_PROC_NOT_FOUND;
    const LONG status = deleteKey(key);
    return status >= 0 ? ERROR_SUCCESS : static_cast<LSTATUS>(toError(status));
}

}  // namespace

LSTATUS OpenKeyItself(HKEY parent, const char* subkey, REGSAM access, CUniqueKey& key) {
    return ::RegOpenKeyExA(parent, subkey, REG_OPTION_OPEN_LINK, access, key.Receive());
}

bool MayBeLink(HKEY key) {
    DWORD type = REG_NONE;
    const LSTATUS result = ::RegQueryValueExA(key, kLinkValueName, nullptr, &type, nullptr, nullptr);
    return result == ERROR_SUCCESS ? type == REG_LINK : result != ERROR_FILE_NOT_FOUND;
}

LSTATUS DeleteKeyItself(HKEY parent, const char* subkey) {
    if (*subkey == '\0') return ERROR_FILE_NOT_FOUND;  // the system would delete the parent
    CUniqueKey key;
    if (OpenKeyItself(parent, subkey, DELETE | KEY_QUERY_VALUE, key) == ERROR_SUCCESS) {
        if (MayBeLink(key.Get())) return DeleteOpenedKey(key.Get());
        key.Reset();
        return ::RegDeleteKeyA(parent, subkey);
    }
    // What cannot be read may be a link, so it goes by its handle and not by its name.
    const LSTATUS opened = OpenKeyItself(parent, subkey, DELETE, key);
    return opened == ERROR_SUCCESS ? DeleteOpenedKey(key.Get()) : opened;
}

std::wstring KeyObjectName(HKEY key) {
    static const auto queryKey = SystemProc<NtQueryKeyProc>("NtQueryKey");
    constexpr ULONG kLongestName = 0x10000 + sizeof(ULONG);
    std::vector<unsigned char> answer(kLongestName);
    ULONG needed = 0;
    if (queryKey == nullptr || queryKey(key, kKeyNameInformation, answer.data(), kLongestName, &needed) < 0)
        return {};
    // The name stands behind its length in bytes.
    const ULONG bytes = *reinterpret_cast<const ULONG*>(answer.data());
    return {reinterpret_cast<const wchar_t*>(answer.data() + sizeof(ULONG)), bytes / sizeof(wchar_t)};
}

bool CFollowedLinks::MayFollow(HKEY link, HKEY target) {
    // A system's own keys are reached by two or three ways.
    constexpr int kMostEntries = 4;
    const auto nameOf = [](HKEY key) {
        std::wstring name = KeyObjectName(key);
        ::CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
        return name;
    };
    const std::wstring name = nameOf(target);
    if (name.empty() || (nameOf(link) + L"\\").starts_with(name + L"\\")) return false;
    return ++m_entries[name] <= kMostEntries;
}

bool IsSameKey(HKEY one, HKEY other) {
    const std::wstring name = KeyObjectName(one);
    return !name.empty() && ::lstrcmpiW(name.c_str(), KeyObjectName(other).c_str()) == 0;
}
