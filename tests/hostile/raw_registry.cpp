#include "tests/hostile/raw_registry.h"

#include <winternl.h>

namespace {

constexpr ULONG kOpenLink = 0x100;  // OBJ_OPENLINK
constexpr ULONG kNoCase = 0x40;     // OBJ_CASE_INSENSITIVE

template <class Function>
Function NativeFunction(const char* name) {
    const HMODULE library = ::GetModuleHandleA("ntdll.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

UNICODE_STRING CountedText(const std::wstring& text) {
    const auto bytes = static_cast<USHORT>(text.size() * sizeof(wchar_t));
    return {bytes, bytes, const_cast<wchar_t*>(text.data())};
}

struct Place {
    Place(HKEY parent, const std::wstring& name) : counted(CountedText(name)) {
        attributes.Length = sizeof attributes;
        attributes.RootDirectory = parent;
        attributes.ObjectName = &counted;
        attributes.Attributes = kOpenLink | kNoCase;
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    UNICODE_STRING counted;
    OBJECT_ATTRIBUTES attributes{};
};

}  // namespace

CUniqueKey OpenRaw(HKEY parent, const std::wstring& name, REGSAM access) {
    using OpenProc = NTSTATUS(NTAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, ULONG);
    static const auto open = NativeFunction<OpenProc>("NtOpenKeyEx");
    Place place(parent, name);
    HANDLE key = nullptr;
    if (open(&key, access, &place.attributes, REG_OPTION_OPEN_LINK) < 0) return {};
    return CUniqueKey(static_cast<HKEY>(key));
}

CUniqueKey CreateRaw(HKEY parent, const std::wstring& name) {
    using CreateProc =
        NTSTATUS(NTAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, ULONG, UNICODE_STRING*, ULONG, ULONG*);
    static const auto create = NativeFunction<CreateProc>("NtCreateKey");
    Place place(parent, name);
    HANDLE key = nullptr;
    if (create(&key, KEY_ALL_ACCESS, &place.attributes, 0, nullptr, 0, nullptr) < 0) return {};
    return CUniqueKey(static_cast<HKEY>(key));
}

CUniqueKey CreateRawLink(HKEY parent, const std::wstring& name, const std::wstring& target) {
    CUniqueKey link;
    if (::RegCreateKeyExW(parent, name.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK, KEY_ALL_ACCESS, nullptr,
                          link.Receive(), nullptr) != ERROR_SUCCESS)
        return {};
    // A link's target is stored without a terminator.
    const std::string data(reinterpret_cast<const char*>(target.data()), target.size() * sizeof(wchar_t));
    if (!SetRaw(link.Get(), {L"SymbolicLinkValue", REG_LINK, data})) return {};
    return link;
}

bool SetRaw(HKEY key, const RawValue& value) {
    using SetProc = NTSTATUS(NTAPI*)(HANDLE, UNICODE_STRING*, ULONG, ULONG, const void*, ULONG);
    static const auto set = NativeFunction<SetProc>("NtSetValueKey");
    UNICODE_STRING counted = CountedText(value.name);
    return set(key, &counted, 0, value.type, value.data.data(), static_cast<ULONG>(value.data.size())) >= 0;
}

bool DeleteRawValue(HKEY key, const std::wstring& name) {
    static const auto remove = NativeFunction<NTSTATUS(NTAPI*)(HANDLE, UNICODE_STRING*)>("NtDeleteValueKey");
    UNICODE_STRING counted = CountedText(name);
    return remove(key, &counted) >= 0;
}

void DeleteRawTree(HKEY key) {
    static const auto remove = NativeFunction<NTSTATUS(NTAPI*)(HANDLE)>("NtDeleteKey");
    for (const std::wstring& name : RawSubkeys(key))
        if (const CUniqueKey subkey = OpenRaw(key, name, KEY_ALL_ACCESS)) DeleteRawTree(subkey.Get());
    remove(key);
}

std::vector<std::wstring> RawSubkeys(HKEY key) {
    std::vector<std::wstring> names;
    wchar_t name[512];
    for (DWORD index = 0;; ++index) {
        DWORD length = static_cast<DWORD>(std::size(name));
        if (::RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return names;
        names.emplace_back(name, length);
    }
}

std::vector<RawValue> RawValues(HKEY key) {
    static std::vector<wchar_t> name(0x8000);
    static std::vector<char> data(0x200000);
    std::vector<RawValue> values;
    for (DWORD index = 0;; ++index) {
        auto nameLength = static_cast<DWORD>(name.size());
        auto dataBytes = static_cast<DWORD>(data.size());
        DWORD type = 0;
        if (::RegEnumValueW(key, index, name.data(), &nameLength, nullptr, &type,
                            reinterpret_cast<BYTE*>(data.data()), &dataBytes) != ERROR_SUCCESS)
            return values;
        values.push_back({{name.data(), nameLength}, type, {data.data(), dataBytes}});
    }
}

std::wstring Widen(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    const auto bytes = static_cast<int>(text.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string Narrow(const std::wstring& name) {
    std::string text(3 * name.size(), '\0');
    const int length = ::WideCharToMultiByte(CP_ACP, 0, name.data(), static_cast<int>(name.size()),
                                             text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(length));
    return text.substr(0, text.find('\0'));
}

std::wstring Folded(std::wstring name) {
    ::CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
    return name;
}
