#include "tests/e2e/whole_registry.h"

#include <doctest/doctest.h>

#include "platform/owners.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/shown_rows.h"

namespace {

/// An empty default value where there was none: the repair of a key without one makes it, and text to be
/// written back cannot take a value away.
void DropEmptyDefaults(Tree& tree) {
    const auto found = tree.values.find("");
    if (found != tree.values.end() && found->second == TreeValue{REG_SZ, ""}) tree.values.erase(found);
    for (auto& [name, subkey] : tree.subkeys) DropEmptyDefaults(subkey);
}

Tree ReadMachineTree(const char* name) {
    CUniqueKey key;
    REQUIRE(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, name, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS);
    return ReadTree(key.Get());
}

}  // namespace

Tree ReadRegistry() {
    Tree tree;
    for (const char* name : {"Software", R"(System\CurrentControlSet\Services)"})
        tree.subkeys[name] = ReadMachineTree(name);
    tree.subkeys["user"] = ReadTree(HKEY_CURRENT_USER);
    DropEmptyDefaults(tree);
    tree.subkeys["user"].subkeys["Software"].subkeys.erase("Wine");
    Tree* key = &tree.subkeys["user"];
    for (const char* name : {"Software", "Microsoft", "Windows", "CurrentVersion", "Applets"})
        key = &key->subkeys[name];
    key->subkeys.erase("Regedit");
    return tree;
}

std::string DifferenceInTime(const Tree& before, DWORD milliseconds) {
    const DWORD start = ::GetTickCount();
    std::string difference;
    do {
        ::Sleep(500);
        difference = Difference(before, ReadRegistry());
    } while (!difference.empty() && ::GetTickCount() - start < milliseconds);
    return difference;
}

bool IsOurs(const ListRow& row) {
    const auto marked = [](const std::string& text) { return text.find(kMark) != std::string::npos; };
    return marked(row.key) || marked(row.valueName) || marked(row.dataReference);
}

bool IsStillThere(const ListRow& row) {
    const KeyPlace place = PlaceOf(row.key);
    CUniqueKey key;
    if (::RegOpenKeyExA(place.root, place.subkey.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS)
        return false;
    DWORD bytes = 0;
    return ::RegQueryValueExA(key.Get(), row.valueName.c_str(), nullptr, nullptr, nullptr, &bytes) ==
               ERROR_SUCCESS &&
           (!row.valueName.empty() || bytes > 1);
}
