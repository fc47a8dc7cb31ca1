#pragma once

#include <windows.h>

#include <string>

#include "platform/owners.h"

/// Opens a key by its parent and name. Of a symbolic link the link itself is opened, never the key that it
/// leads to; links further up in a path are followed.
[[nodiscard]] LSTATUS OpenKeyItself(HKEY parent, const char* subkey, REGSAM access, CUniqueKey& key);

/// Whether a key is a symbolic link, or does not tell.
/// @param key  opened by OpenKeyItself with KEY_QUERY_VALUE.
[[nodiscard]] bool MayBeLink(HKEY key);

/// Deletes a key that has no subkeys; of a symbolic link the link, never the key that it leads to.
/// @return the system's code, as of RegDeleteKeyA.
[[nodiscard]] LSTATUS DeleteKeyItself(HKEY parent, const char* subkey);

/// The key's name in the system's object tree, as in L"\\REGISTRY\\MACHINE\\SOFTWARE": one for each key,
/// whichever root or link led to it. Empty where the system does not tell.
[[nodiscard]] std::wstring KeyObjectName(HKEY key);

/// Whether two open keys are one key of the system; false where it does not tell.
[[nodiscard]] bool IsSameKey(HKEY one, HKEY other);
