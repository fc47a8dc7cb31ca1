#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "platform/owners.h"

/// Opens a key by its parent and name. Of a symbolic link the link itself is opened, never the key that it
/// leads to; links further up in a path are followed.
[[nodiscard]] LSTATUS OpenKeyItself(HKEY parent, const char* subkey, REGSAM access, CUniqueKey& key);

/// The value in which a link says where it leads.
inline constexpr char kLinkValueName[] = "SymbolicLinkValue";

/// Whether a key is a symbolic link, or does not tell.
/// @param key  opened by OpenKeyItself with KEY_QUERY_VALUE.
[[nodiscard]] bool MayBeLink(HKEY key);

/// Deletes a key that has no subkeys; of a symbolic link the link, never the key that it leads to.
/// @return the system's code, as of RegDeleteKeyA.
[[nodiscard]] LSTATUS DeleteKeyItself(HKEY parent, const char* subkey);

/// The key's name in the system's object tree, as in L"\\REGISTRY\\MACHINE\\SOFTWARE": one for each key,
/// whichever root or link led to it. Empty where the system does not tell.
[[nodiscard]] std::wstring KeyObjectName(HKEY key);

/// Keeps a walk that follows links from going on without end: links may lead to keys above them, and each of
/// many keys may lead twice to the next one.
class CFollowedLinks {
public:
    /// Whether a walk may go on behind a link. A key is entered a few times only in this way, and never from
    /// below itself.
    /// @param link    the link itself.
    /// @param target  the key that it leads to.
    [[nodiscard]] bool MayFollow(HKEY link, HKEY target);

private:
    std::map<std::wstring, int> m_entries;  // by object name in capitals
};

/// Whether two open keys are one key of the system; false where it does not tell.
[[nodiscard]] bool IsSameKey(HKEY one, HKEY other);
