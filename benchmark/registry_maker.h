#pragma once

#include <windows.h>

#include <cstddef>

/// Where the larger part of the scratch registry stands, in HKEY_LOCAL_MACHINE.
inline constexpr char kScratchKey[] = "Software\\VellumorBench";
inline constexpr char kScratchPath[] = "\\HKEY_LOCAL_MACHINE\\Software\\VellumorBench";

/// Fills the registry with keys and values like those of a machine in use: mostly machine software, some of
/// the user's, classes, interfaces and program identifiers. There are three values for a key on average; of
/// the texts that name a file, one in fifty names one that is gone. The same number gives the same registry.
/// @param from, to  numbers of the keys that are made: a registry can be made to grow.
void MakeRegistry(std::size_t from, std::size_t to);

/// How many keys and values a tree has.
struct TreeSize {
    std::size_t keys = 0;
    std::size_t values = 0;
};
/// Counts a tree by walking it, links left out. @param key  open; borrowed.
[[nodiscard]] TreeSize CountTree(HKEY key);
/// The same for everything that an analysis scans deeply.
[[nodiscard]] TreeSize CountHives();
