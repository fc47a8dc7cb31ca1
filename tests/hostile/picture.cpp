#include "tests/hostile/picture.h"

#include <algorithm>

namespace {

/// What changes by itself while programs with windows run.
bool IsNoise(const std::wstring& path) {
    constexpr const wchar_t* kNoise[] = {L"\\software\\wine", L"\\applets\\regedit",
                                         L"\\volatile environment"};
    return std::ranges::any_of(kNoise, [&](const std::wstring& end) { return path.ends_with(end); });
}

void AddKey(Picture& picture, HKEY parent, const std::wstring& name, const std::wstring& path) {
    if (IsNoise(path)) return;
    KeyPicture& key = picture[path];
    const CUniqueKey opened = OpenRaw(parent, name, KEY_READ);
    key.isReadable = static_cast<bool>(opened);
    if (!opened) return;
    for (RawValue& value : RawValues(opened.Get())) {
        std::wstring folded = Folded(value.name);
        key.order.push_back(folded);
        key.values.emplace(std::move(folded), std::move(value));
    }
    for (const std::wstring& subkey : RawSubkeys(opened.Get()))
        AddKey(picture, opened.Get(), subkey, path + L"\\" + Folded(subkey));
}

void CompareValues(const std::wstring& path, const KeyPicture& before, const KeyPicture& after,
                   std::vector<Change>& changes) {
    using Kind = Change::Kind;
    for (const auto& [name, value] : before.values) {
        const auto found = after.values.find(name);
        if (found == after.values.end())
            changes.push_back({Kind::ValueGone, path, name});
        else if (found->second != value)
            changes.push_back({Kind::ValueChanged, path, name, found->second});
    }
    for (const auto& [name, value] : after.values)
        if (!before.values.contains(name)) changes.push_back({Kind::ValueNew, path, name, value});
}

}  // namespace

Picture TakeRegistryPicture() {
    Picture picture;
    for (const wchar_t* root : {L"\\Registry\\Machine", L"\\Registry\\User"}) {
        const CUniqueKey key = OpenRaw(nullptr, root, KEY_READ);
        for (const std::wstring& name : RawSubkeys(key.Get()))
            AddKey(picture, key.Get(), name, Folded(std::wstring(root) + L"\\" + name));
    }
    return picture;
}

std::vector<Change> Changes(const Picture& before, const Picture& after) {
    using Kind = Change::Kind;
    std::vector<Change> changes;
    std::wstring gone;
    for (const auto& [path, key] : before) {
        const auto found = after.find(path);
        if (found == after.end()) {
            if (!gone.empty() && path.starts_with(gone)) continue;
            changes.push_back({Kind::KeyGone, path, {}});
            gone = path + L"\\";
        } else if (key.isReadable != found->second.isReadable) {
            changes.push_back({Kind::RightsChanged, path, {}});
        } else {
            CompareValues(path, key, found->second, changes);
        }
    }
    for (const auto& [path, key] : after)
        if (!before.contains(path)) changes.push_back({Kind::KeyNew, path, {}});
    return changes;
}

std::string Describe(const Change& change) {
    constexpr const char* kKinds[] = {"key gone",      "key new",   "value gone",
                                      "value changed", "value new", "rights changed"};
    return std::string(kKinds[static_cast<int>(change.kind)]) + ": " + Narrow(change.key) + " | " +
           Narrow(change.value);
}
