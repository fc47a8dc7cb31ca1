#pragma once

#include <windows.h>

#include <map>
#include <string>

/// A value as it comes back from an export: text without what stands behind its first zero byte, and always
/// of the plain type.
struct TreeValue {
    DWORD type;
    std::string data;
    bool operator==(const TreeValue&) const = default;
};

/// A key's values and subkeys, by their names.
struct Tree {
    std::map<std::string, TreeValue> values;
    std::map<std::string, Tree> subkeys;
    bool operator==(const Tree&) const = default;
};

/// Reads a key's tree; what cannot be opened or read is left out.
[[nodiscard]] Tree ReadTree(HKEY key);

/// The trees' first difference in words; empty when they are equal.
[[nodiscard]] std::string Difference(const Tree& one, const Tree& other, const std::string& path = "");
