#pragma once

#include <windows.h>

#include <random>

/// Fills a key with values and subkeys of random names, types and data. What an export into lines of text
/// cannot carry is left out: line feeds and carriage returns in names of keys and values and in text.
void PlantRandomTree(HKEY key, std::mt19937& random, int levels = 3);
