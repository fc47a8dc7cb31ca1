#pragma once

#include <windows.h>

#include "registry/registry_access.h"

/// Whether a subkey's name, as an enumeration tells it, stands for the same characters as the stored one.
[[nodiscard]] bool IsItsName(HKEY key, DWORD index, const char* name);

/// Tells whether the names that an enumeration gives lead to the subkeys that they are names of. The narrow
/// calls take characters that the code page lacks for similar ones, so that two subkeys can have one name,
/// and a walk that opens both enters the same key twice, on every level again. One for each walk over
/// subkeys.
class CSubkeyOrder {
public:
    /// Whether a name is the first that leads to its key.
    /// @param key    whose subkeys are enumerated.
    /// @param index  of the subkey.
    [[nodiscard]] bool IsFirst(HKEY key, DWORD index, const char* name);

private:
    char m_former[kNameBytes + 1] = "";
};
