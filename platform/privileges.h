#pragma once

#include <windows.h>

/// Enables or disables one privilege of a token.
/// @param token      open with TOKEN_ADJUST_PRIVILEGES and TOKEN_QUERY; borrowed.
/// @param privilege  its name, as in "SeRestorePrivilege".
/// @return whether the token has the privilege in the wanted state now; one that it does not hold cannot be
/// enabled, which the system reports as success with ERROR_NOT_ALL_ASSIGNED.
[[nodiscard]] bool SetTokenPrivilege(HANDLE token, const char* privilege, bool enable);

/// Enables one privilege of this process where it holds it. Whoever needs it learns of a failure from the
/// call that needed it.
void EnablePrivilege(const char* privilege);

/// The rights to a token that changing privileges and asking for its user need.
constexpr DWORD kTokenAccess = TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY;
static_assert(kTokenAccess == 40);
