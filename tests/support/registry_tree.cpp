#include "tests/support/registry_tree.h"

#include <vector>

#include "platform/owners.h"

namespace {

TreeValue AsReplayed(DWORD type, std::string data) {
    if (type == REG_EXPAND_SZ) type = REG_SZ;
    if (type == REG_SZ) data = data.c_str();
    return {type, data};
}

void ReadValues(HKEY key, Tree& tree) {
    static std::vector<char> name(0x8000);
    static std::vector<char> data(0x100000);
    for (DWORD index = 0;; ++index) {
        auto nameBytes = static_cast<DWORD>(name.size());
        auto dataBytes = static_cast<DWORD>(data.size());
        DWORD type = 0;
        const LSTATUS result = ::RegEnumValueA(key, index, name.data(), &nameBytes, nullptr, &type,
                                               reinterpret_cast<BYTE*>(data.data()), &dataBytes);
        if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return;
        if (result == ERROR_SUCCESS)
            tree.values[{name.data(), nameBytes}] = AsReplayed(type, {data.data(), dataBytes});
    }
}

}  // namespace

Tree ReadTree(HKEY key) {
    Tree tree;
    ReadValues(key, tree);
    char name[256];
    for (DWORD index = 0; ::RegEnumKeyA(key, index, name, sizeof name) == ERROR_SUCCESS; ++index) {
        CUniqueKey subkey;
        if (::RegOpenKeyExA(key, name, REG_OPTION_OPEN_LINK, KEY_READ, subkey.Receive()) != ERROR_SUCCESS)
            continue;
        tree.subkeys[name] = ReadTree(subkey.Get());
    }
    return tree;
}

std::string Difference(const Tree& one, const Tree& other, const std::string& path) {
    for (const auto& [name, value] : one.values) {
        const auto found = other.values.find(name);
        if (found == other.values.end()) return path + ": no value " + name;
        if (found->second != value)
            return path + ": value " + name + " of type " + std::to_string(value.type) + " and " +
                   std::to_string(value.data.size()) + " bytes came back as type " +
                   std::to_string(found->second.type) + " and " + std::to_string(found->second.data.size());
    }
    if (one.values.size() != other.values.size()) return path + ": more values";
    for (const auto& [name, subkey] : one.subkeys) {
        const auto found = other.subkeys.find(name);
        if (found == other.subkeys.end()) return path + ": no subkey " + name;
        const std::string difference = Difference(subkey, found->second, path + "\\" + name);
        if (!difference.empty()) return difference;
    }
    return one.subkeys.size() == other.subkeys.size() ? "" : path + ": more subkeys";
}
