#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/owners.h"

// What the documented calls cannot do: hostile registry contents, and counting handles.

/// The key's name in the system's object tree, as in L"\\REGISTRY\\Machine\\Software".
[[nodiscard]] std::wstring ObjectName(HKEY key);

/// Deletes the very key that is open. By name the target of a link would be deleted instead, and a name with
/// an embedded zero cannot be told at all.
bool DeleteOpenKey(HKEY key);

/// Creates a key or a text value whose name may hold zeros.
[[nodiscard]] CUniqueKey CreateKeyByCountedName(HKEY parent, std::wstring name);
bool SetTextByCountedName(HKEY key, std::wstring name, std::wstring_view text);

/// Every handle that this process has open now. (The process's own handle counter stays 0 under Wine.)
[[nodiscard]] std::vector<HANDLE> OwnHandles();

/// The rights that a handle was opened with.
[[nodiscard]] ACCESS_MASK GrantedRights(HANDLE handle);

/// A kernel object's type, as in L"Event", and its name; empty: unnamed.
[[nodiscard]] std::wstring HandleType(HANDLE handle);
[[nodiscard]] std::wstring HandleName(HANDLE handle);
