#include "tests/repair/key_security.h"

#include <doctest/doctest.h>

#include "platform/owners.h"

CKeySecurity::CKeySecurity(HKEY key) {
    constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    ::RegGetKeySecurity(key, kParts, nullptr, &size);
    m_block.resize(size);
    REQUIRE(::RegGetKeySecurity(key, kParts, m_block.data(), &size) == ERROR_SUCCESS);
}

PSID CKeySecurity::Owner() {
    PSID owner = nullptr;
    BOOL isDefaulted = FALSE;
    ::GetSecurityDescriptorOwner(m_block.data(), &owner, &isDefaulted);
    return owner;
}

PACL CKeySecurity::List() {
    PACL list = nullptr;
    BOOL isPresent = FALSE;
    BOOL isDefaulted = FALSE;
    ::GetSecurityDescriptorDacl(m_block.data(), &isPresent, &list, &isDefaulted);
    REQUIRE(isPresent != FALSE);
    return list;
}

CUser::CUser() {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, token.Receive()) != FALSE);
    DWORD size = 0;
    ::GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
    m_block.resize(size);
    REQUIRE(::GetTokenInformation(token.Get(), TokenUser, m_block.data(), size, &size) != FALSE);
}

bool IsEnabled(const char* privilege) {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, token.Receive()) != FALSE);
    PRIVILEGE_SET set{1, PRIVILEGE_SET_ALL_NECESSARY, {}};
    REQUIRE(::LookupPrivilegeValueA(nullptr, privilege, &set.Privilege[0].Luid) != FALSE);
    BOOL isEnabled = FALSE;
    REQUIRE(::PrivilegeCheck(token.Get(), &set, &isEnabled) != FALSE);
    return isEnabled != FALSE;
}

void GiveToEveryone(HKEY key) {
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    PSID everyone = nullptr;
    REQUIRE(::AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everyone) !=
            FALSE);
    SECURITY_DESCRIPTOR descriptor{};
    ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    ::SetSecurityDescriptorOwner(&descriptor, everyone, FALSE);
    REQUIRE(::RegSetKeySecurity(key, OWNER_SECURITY_INFORMATION, &descriptor) == ERROR_SUCCESS);
    REQUIRE(::EqualSid(CKeySecurity(key).Owner(), everyone) != FALSE);
    ::FreeSid(everyone);
}
