#pragma once

#include <windows.h>

#include <map>
#include <random>
#include <string>
#include <utility>

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

/// Fills a key with values and subkeys of random names, types and data. What an export into lines of text
/// cannot carry is left out: line feeds and carriage returns in names of keys and values and in text.
void PlantRandomTree(HKEY key, std::mt19937& random, int levels = 3);

/// Reads a key's tree.
[[nodiscard]] Tree ReadTree(HKEY key);

/// The trees' first difference in words; empty when they are equal.
[[nodiscard]] std::string Difference(const Tree& one, const Tree& other, const std::string& path = "");
