#include "platform/privileges.h"

#include "platform/owners.h"

bool SetTokenPrivilege(HANDLE token, const char* privilege, bool enable) {
    TOKEN_PRIVILEGES wanted{};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0].Attributes = enable ? SE_PRIVILEGE_ENABLED : 0;
    if (::LookupPrivilegeValueA(nullptr, privilege, &wanted.Privileges[0].Luid) == FALSE) return false;
    ::SetLastError(ERROR_SUCCESS);
    if (::AdjustTokenPrivileges(token, FALSE, &wanted, sizeof wanted, nullptr, nullptr) == FALSE)
        return false;
    return ::GetLastError() == ERROR_SUCCESS;
}

void EnablePrivilege(const char* privilege) {
    CUniqueHandle token;
    if (::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, token.Receive()) == FALSE) return;
    // A privilege that stays out of reach shows where it is used.
    if (!SetTokenPrivilege(token.Get(), privilege, true)) return;
}
