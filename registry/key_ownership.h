#pragma once

#include <windows.h>

// Taking over a key whose security refuses even an administrator. All of these work on keys below
// HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE and HKEY_USERS; a key below any other root, and a
// root itself, is left alone. A step that fails ends the operation silently, with everything that it holds
// released: whoever asked learns of it from the next call that is refused. Of a symbolic link the link is
// changed, never the key that it leads to.

/// Makes this process's user the key's owner. Needs the privileges to take ownership and to restore.
void TakeKeyOwnership(HKEY root, const char* subkey);

/// Replaces the key's access list by one entry: every right to the key, for this process's user.
void GrantFullAccess(HKEY root, const char* subkey);

/// The same with the privilege to restore enabled first, which opens keys that refuse to have their list
/// changed.
void GrantFullAccessWithRestore(HKEY root, const char* subkey);

/// Both: ownership, then full access. For a key whose opening has just been refused.
void ForceKeyAccess(HKEY root, const char* subkey);
