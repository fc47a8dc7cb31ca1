#include "tests/hostile/hostile_registry.h"

#include "tests/driver/wait.h"
#include "tests/support/scratch_key.h"

namespace {

bool IsMarked(const std::wstring& name) { return name.find(kWideMark) != std::wstring::npos; }

}  // namespace

std::string Bytes(const std::wstring& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

RawValue TextValue(const std::wstring& name, const std::wstring& text) {
    return {name, REG_SZ, Bytes(text + L'\0')};
}

CHostileRegistry::CHostileRegistry() = default;

CHostileRegistry::~CHostileRegistry() { Remove(); }

void CHostileRegistry::OpenAreas() {
    for (const SubkeyList& list : SubkeyLists()) (void)Area(list.root, list.area);
    for (const ValueList& list : ValueLists()) (void)Area(list.root, list.area);
}

void CHostileRegistry::Remove() {
    for (const CUniqueKey& key : m_restricted) (void)SetAccessList(key.Get(), KEY_ALL_ACCESS);
    for (const auto& [path, key] : m_areas) RemoveMarked(key.Get());
}

void CHostileRegistry::RemoveMarked(HKEY area) {
    for (const RawValue& value : RawValues(area))
        if (IsMarked(value.name)) DeleteRawValue(area, value.name);
    for (const std::wstring& name : RawSubkeys(area))
        if (IsMarked(name))
            if (const CUniqueKey key = OpenRaw(area, name, KEY_ALL_ACCESS)) DeleteRawTree(key.Get());
}

HKEY CHostileRegistry::Area(HKEY root, const std::wstring& path) {
    const std::wstring name = std::to_wstring(reinterpret_cast<UINT_PTR>(root)) + path;
    for (const auto& [known, key] : m_areas)
        if (known == name) return key.Get();
    CUniqueKey key;
    if (::RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(),
                          nullptr) != ERROR_SUCCESS)
        throw CDriverError("cannot open " + Narrow(path));
    return m_areas.emplace_back(name, std::move(key)).second.Get();
}

void CHostileRegistry::PlantSubkey(const SubkeyList& list, const std::wstring& name, RawValue value) {
    HKEY key = AddKey(Area(list.root, list.area), name);
    std::wstring inner = list.inner;
    while (!inner.empty()) {
        const std::wstring first = inner.substr(0, inner.find(L'\\'));
        inner.erase(0, first.size() + 1);
        key = AddKey(key, first);
    }
    value.name = list.valueName;
    SetValue(key, value);
}

HKEY CHostileRegistry::AddKey(HKEY parent, const std::wstring& name) {
    CUniqueKey key = CreateRaw(parent, name);
    if (!key) throw CDriverError("cannot create " + Narrow(name));
    ++m_count;
    return m_keys.emplace_back(std::move(key)).Get();
}

void CHostileRegistry::AddLink(HKEY parent, const std::wstring& name, const std::wstring& target) {
    CUniqueKey link = CreateRawLink(parent, name, target);
    if (!link) throw CDriverError("cannot link " + Narrow(name));
    ++m_count;
    m_keys.push_back(std::move(link));
}

void CHostileRegistry::SetValue(HKEY key, const RawValue& value) {
    if (!SetRaw(key, value)) throw CDriverError("cannot set " + Narrow(value.name));
    ++m_count;
}

void CHostileRegistry::Restrict(CUniqueKey key, REGSAM rights) {
    if (SetAccessList(key.Get(), rights) != ERROR_SUCCESS) throw CDriverError("cannot restrict a key");
    m_restricted.push_back(std::move(key));
}

std::vector<HostileFamily> HostileFamilies() {
    return {{"names", &PlantNames},  {"line breaks", &PlantLineBreaks},
            {"data", &PlantData},    {"references", &PlantReferences},
            {"trees", &PlantTrees},  {"links", &PlantLinks},
            {"rights", &PlantRights}};
}
