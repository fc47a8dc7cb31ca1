#include "tests/e2e/taken_entries.h"

#include <shlwapi.h>

#include <ranges>
#include <utility>

#include "platform/owners.h"
#include "tests/driver/wait.h"
#include "tests/e2e/shown_rows.h"

namespace {

constexpr DWORD kNameCharacters = 16'384;  // as long as a value's name may be
constexpr DWORD kDataBytes = 1'048'576;    // more than any value of a new machine has

CUniqueKey Open(HKEY root, const std::string& path) {
    CUniqueKey key;
    if (::RegOpenKeyExA(root, path.c_str(), 0, KEY_READ | KEY_WRITE, key.Receive()) != ERROR_SUCCESS)
        return {};
    return key;
}

std::wstring Widen(const std::string& text) {
    const auto bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // never fewer than there are characters
    wide.resize(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes)));
    return wide;
}

std::vector<SavedValue> ReadValues(HKEY key) {
    // Kept from call to call: clearing so much for each of some thousand keys would take seconds.
    static std::wstring name(kNameCharacters, L'\0');
    static std::vector<BYTE> data(kDataBytes);
    std::vector<SavedValue> values;
    for (DWORD index = 0;; ++index) {
        DWORD characters = kNameCharacters;
        DWORD bytes = kDataBytes;
        DWORD type = REG_NONE;
        const LSTATUS result =
            ::RegEnumValueW(key, index, name.data(), &characters, nullptr, &type, data.data(), &bytes);
        if (result == ERROR_NO_MORE_ITEMS) return values;
        if (result != ERROR_SUCCESS) throw CDriverError("a value cannot be read");
        values.push_back({name.substr(0, characters), type, {data.begin(), data.begin() + bytes}});
    }
}

SavedKey ReadTree(HKEY key) {
    SavedKey saved;
    saved.values = ReadValues(key);
    wchar_t name[MAX_PATH] = L"";
    for (DWORD index = 0; ::RegEnumKeyW(key, index, name, MAX_PATH) == ERROR_SUCCESS; ++index) {
        CUniqueKey subkey;
        if (::RegOpenKeyExW(key, name, 0, KEY_READ, subkey.Receive()) != ERROR_SUCCESS)
            throw CDriverError("a key cannot be opened");
        saved.subkeys.push_back(ReadTree(subkey.Get()));
        saved.subkeys.back().name = name;
    }
    return saved;
}

void WriteContent(HKEY key, const SavedKey& saved) {
    for (const SavedValue& value : saved.values)
        ::RegSetValueExW(key, value.name.c_str(), 0, value.type, value.data.data(),
                         static_cast<DWORD>(value.data.size()));
    for (const SavedKey& subkey : saved.subkeys) {
        CUniqueKey created;
        if (::RegCreateKeyW(key, subkey.name.c_str(), created.Receive()) == ERROR_SUCCESS)
            WriteContent(created.Get(), subkey);
    }
}

}  // namespace

CTakenEntries::~CTakenEntries() {
    for (const Taken& taken : m_taken | std::views::reverse) {
        CUniqueKey key;
        if (::RegCreateKeyA(taken.root, taken.key.c_str(), key.Receive()) == ERROR_SUCCESS)
            WriteContent(key.Get(), taken.content);
    }
}

void CTakenEntries::TakeAllClasses() {
    m_taken.push_back({HKEY_CLASSES_ROOT, "", ReadTree(HKEY_CLASSES_ROOT)});
    const SavedKey& classes = m_taken.back().content;
    for (const SavedKey& subkey : classes.subkeys) ::SHDeleteKeyW(HKEY_CLASSES_ROOT, subkey.name.c_str());
    for (const SavedValue& value : classes.values) ::RegDeleteValueW(HKEY_CLASSES_ROOT, value.name.c_str());
}

void CTakenEntries::TakeEntryOf(const ListRow& row) {
    const KeyPlace place = PlaceOf(row.key);
    if (row.valueName.empty() && row.dataReference.empty())
        TakeKey(place.root, place.subkey);
    else
        TakeValue(place.root, place.subkey, row.valueName);
}

void CTakenEntries::TakeValue(HKEY root, const std::string& key, const std::string& valueName) {
    const CUniqueKey opened = Open(root, key);
    if (!opened) return;
    for (SavedValue& value : ReadValues(opened.Get())) {
        if (value.name != Widen(valueName)) continue;
        ::RegDeleteValueA(opened.Get(), valueName.c_str());
        m_taken.push_back({root, key, {{}, {std::move(value)}, {}}});
        return;
    }
}

void CTakenEntries::TakeKey(HKEY root, const std::string& key) {
    const CUniqueKey opened = Open(root, key);
    if (!opened) return;
    m_taken.push_back({root, key, ReadTree(opened.Get())});
    ::SHDeleteKeyA(root, key.c_str());
}
