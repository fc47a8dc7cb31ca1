#include "tests/support/native_calls.h"

#include <winternl.h>

#include <cstring>

namespace {

template <class Function>
Function NativeFunction(const char* name) {
    const HMODULE library = ::GetModuleHandleA("ntdll.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

using QueryProc = NTSTATUS(NTAPI*)(HANDLE, int, void*, ULONG, ULONG*);

constexpr int kKeyNameInformation = 3;
constexpr int kObjectBasicInformation = 0;
constexpr int kObjectNameInformation = 1;
constexpr int kObjectTypeInformation = 2;
constexpr int kSystemHandleInformation = 16;
constexpr NTSTATUS kLengthMismatch = static_cast<NTSTATUS>(0xC0000004);

/// One row of the system's handle table.
struct HandleRow {
    ULONG processId;
    BYTE objectType;
    BYTE flags;
    USHORT handle;
    void* object;
    ULONG access;
};

UNICODE_STRING CountedText(std::wstring& text) {
    const auto bytes = static_cast<USHORT>(text.size() * sizeof(wchar_t));
    return {bytes, bytes, text.data()};
}

std::wstring ObjectText(HANDLE handle, int what) {
    static const auto query = NativeFunction<QueryProc>("NtQueryObject");
    alignas(UNICODE_STRING) char buffer[2048] = {};
    ULONG bytes = 0;
    if (query(handle, what, buffer, sizeof buffer, &bytes) != 0) return {};
    UNICODE_STRING text;
    std::memcpy(&text, buffer, sizeof text);
    return text.Buffer == nullptr ? std::wstring() : std::wstring(text.Buffer, text.Length / sizeof(wchar_t));
}

}  // namespace

std::wstring ObjectName(HKEY key) {
    static const auto query = NativeFunction<QueryProc>("NtQueryKey");
    struct {
        ULONG bytes;
        wchar_t text[2048];
    } name = {};
    ULONG bytes = 0;
    if (query(key, kKeyNameInformation, &name, sizeof name, &bytes) != 0) return {};
    return {name.text, name.bytes / sizeof(wchar_t)};
}

bool DeleteOpenKey(HKEY key) {
    static const auto remove = NativeFunction<NTSTATUS(NTAPI*)(HANDLE)>("NtDeleteKey");
    return remove(key) == 0;
}

CUniqueKey CreateKeyByCountedName(HKEY parent, std::wstring name) {
    using CreateProc =
        NTSTATUS(NTAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, ULONG, UNICODE_STRING*, ULONG, ULONG*);
    static const auto create = NativeFunction<CreateProc>("NtCreateKey");
    UNICODE_STRING counted = CountedText(name);
    OBJECT_ATTRIBUTES attributes{};
    attributes.Length = sizeof attributes;
    attributes.RootDirectory = parent;
    attributes.ObjectName = &counted;
    HANDLE key = nullptr;
    // Above zero is success too: so the key of the performance texts says that it is a special one.
    if (create(&key, KEY_ALL_ACCESS, &attributes, 0, nullptr, 0, nullptr) < 0) return {};
    return CUniqueKey(static_cast<HKEY>(key));
}

bool SetTextByCountedName(HKEY key, std::wstring name, std::wstring_view text) {
    using SetProc = NTSTATUS(NTAPI*)(HANDLE, UNICODE_STRING*, ULONG, ULONG, const void*, ULONG);
    static const auto set = NativeFunction<SetProc>("NtSetValueKey");
    UNICODE_STRING counted = CountedText(name);
    return set(key, &counted, 0, REG_SZ, text.data(), static_cast<ULONG>(text.size() * sizeof(wchar_t))) == 0;
}

std::vector<HANDLE> OwnHandles() {
    static const auto query =
        NativeFunction<NTSTATUS(NTAPI*)(int, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
    std::vector<char> table(1 << 16);
    ULONG bytes = 0;
    while (query(kSystemHandleInformation, table.data(), static_cast<ULONG>(table.size()), &bytes) ==
           kLengthMismatch)
        table.resize(table.size() * 2);
    ULONG rows = 0;
    std::memcpy(&rows, table.data(), sizeof rows);
    std::vector<HANDLE> handles;
    for (ULONG index = 0; index < rows; ++index) {
        HandleRow row;
        std::memcpy(&row, table.data() + sizeof(void*) + index * sizeof row, sizeof row);
        if (row.processId == ::GetCurrentProcessId())
            handles.push_back(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(row.handle)));
    }
    return handles;
}

ACCESS_MASK GrantedRights(HANDLE handle) {
    static const auto query = NativeFunction<QueryProc>("NtQueryObject");
    struct {
        ULONG attributes;
        ACCESS_MASK grantedRights;
        ULONG others[12];
    } basic = {};
    ULONG bytes = 0;
    if (query(handle, kObjectBasicInformation, &basic, sizeof basic, &bytes) != 0) return 0;
    return basic.grantedRights;
}

std::wstring HandleType(HANDLE handle) { return ObjectText(handle, kObjectTypeInformation); }

std::wstring HandleName(HANDLE handle) { return ObjectText(handle, kObjectNameInformation); }
