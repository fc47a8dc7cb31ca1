#include "tests/hostile/explained.h"

#include <algorithm>

#include "tests/e2e/shown_rows.h"
#include "tests/support/native_calls.h"
#include "tests/support/path_names.h"

namespace {

/// How many names the keys have that may go with a row.
std::vector<std::size_t> UnitLengths(const Names& names) {
    std::vector<std::size_t> lengths{names.size()};
    for (std::size_t at = 0; at + 1 < names.size(); ++at) {
        if (names[at] == "Uninstall") lengths.push_back(at + 2);
        if (!names[at].ends_with("Classes")) continue;
        const std::string& list = names[at + 1];
        if ((list == "CLSID" || list == "TypeLib") && at + 2 < names.size() && names[at + 2].size() == 38)
            lengths.push_back(at + 3);
        for (std::size_t inside = at + 2; inside < names.size(); ++inside)
            if (names[inside] == "DefaultIcon" || names[inside] == "shell" || names[inside] == "Shell")
                lengths.push_back(inside);
    }
    return lengths;
}

std::wstring ObjectNameAt(HKEY root, const std::string& path) {
    CUniqueKey key;
    if (::RegOpenKeyExA(root, path.c_str(), 0, MAXIMUM_ALLOWED, key.Receive()) != ERROR_SUCCESS) return {};
    return Folded(ObjectName(key.Get()));
}

/// The key of a path's first names: the way to it is followed, its own name stands for itself.
std::wstring UnitAt(HKEY root, const Names& names, std::size_t length) {
    const std::wstring parent = ObjectNameAt(root, length > 1 ? PathOf(names, length - 1) : "");
    return parent.empty() ? parent : parent + L"\\" + Folded(Widen(names[length - 1]));
}

/// Whether a key is one of a set, or lies below one.
bool IsBelowOne(const std::set<std::wstring>& keys, std::wstring key) {
    for (; !key.empty(); key.resize(key.rfind(L'\\')))
        if (keys.contains(key)) return true;
    return false;
}

}  // namespace

CExplained::CExplained(const std::vector<Row>& rows) {
    for (const Row& row : rows) AddRow(row);
}

void CExplained::AddRow(const Row& row) {
    const KeyPlace place = PlaceOf(row.key);
    const Names names = NamesOf(place.subkey);
    for (const std::size_t length : UnitLengths(names)) {
        // With a value's name a row stands for its key only in some lists.
        const bool isOwnKey = length == names.size();
        const bool isKeyList = row.key.find("\\Eventlog\\Application\\") != std::string::npos;
        if (isOwnKey && !row.valueName.empty() && !isKeyList && UnitLengths(names).size() == 1) continue;
        if (std::wstring unit = UnitAt(place.root, names, length); !unit.empty())
            m_units.insert(std::move(unit));
    }
    const std::wstring key = ObjectNameAt(place.root, place.subkey);
    m_keys.insert(key);
    if (row.valueName.empty())
        m_defaults.insert(key);
    else
        m_values.emplace(key, Narrow(Folded(Widen(row.valueName))));
}

bool CExplained::WasExported(const std::wstring& key) const {
    return IsBelowOne(m_units, key) || IsBelowOne(m_keys, key);
}

bool CExplained::Holds(const Change& change) const {
    using Kind = Change::Kind;
    const bool isNew = change.kind == Kind::KeyNew || change.kind == Kind::ValueNew;
    if (!isNew && IsBelowOne(m_units, change.key)) return true;
    const bool isEmptied = change.value.empty() && change.after.type == REG_SZ && change.after.data.empty();
    switch (change.kind) {
        case Kind::ValueGone:
            return m_values.contains({change.key, Narrow(change.value)});
        case Kind::ValueNew:
        case Kind::ValueChanged:
            return isEmptied && m_defaults.contains(change.key);
        case Kind::RightsChanged:
            return m_defaults.contains(change.key);
        default:
            return false;
    }
}
