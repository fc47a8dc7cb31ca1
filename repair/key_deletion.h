#pragma once

#include <windows.h>

#include <string>

/// An open key and its place in the registry.
struct OpenedKey {
    HKEY key;          // borrowed
    HKEY root;         // the predefined root that it lies under
    std::string path;  // its path below the root; empty: the root itself
};

/// Deletes a subkey with everything below it. Of symbolic links only the links go. A key that refuses to be
/// opened is taken over first. A subkey that cannot be deleted is tried again; when nothing has changed for
/// ten seconds, the key is left with what remains. What others make anew meanwhile is deleted as well, but is
/// no change.
/// @param parentKey  open with kDeletionAccess.
/// @return the system's code of the last deletion: that of the subkey itself where it came so far.
[[nodiscard]] LSTATUS DeleteKeyRecursive(const OpenedKey& parentKey, const std::string& subkeyName);

/// Whether a key has exactly one value and no subkey.
/// @param key  open for reading.
[[nodiscard]] bool KeyHoldsOneValueOnly(HKEY key);

/// The rights with which a parent is opened for deletion.
constexpr REGSAM kDeletionAccess = DELETE | KEY_ENUMERATE_SUB_KEYS;
static_assert(kDeletionAccess == 0x10008);
