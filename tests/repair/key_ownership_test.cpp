#include "registry/key_ownership.h"

#include <doctest/doctest.h>

#include "platform/privileges.h"
#include "tests/repair/key_security.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

void CheckFullAccessForUserAlone(HKEY key) {
    CKeySecurity security(key);
    CUser user;
    const PACL list = security.List();
    REQUIRE(list->AceCount == 1);
    CHECK(list->AclRevision == 2);
    CHECK(list->AclSize == ::GetLengthSid(user.Identifier()) + 16);
    void* entry = nullptr;
    REQUIRE(::GetAce(list, 0, &entry) != FALSE);
    const auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    CHECK(allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE);
    CHECK(allowed->Mask == 0xF003F);
    CHECK(::EqualSid(const_cast<DWORD*>(&allowed->SidStart), user.Identifier()) != FALSE);
}

bool OpensFully(HKEY parent, const char* name) {
    CUniqueKey key;
    return ::RegOpenKeyExA(parent, name, 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS;
}

}  // namespace

TEST_CASE("full access replaces a key's whole list by one entry for the user") {
    CScratchKey scratch;
    const HKEY key = scratch.Add("locked");
    scratch.Restrict(key, KEY_READ);
    REQUIRE_FALSE(OpensFully(scratch.Get(), "locked"));
    GrantFullAccess(HKEY_CURRENT_USER, (scratch.Subkey() + "\\locked").c_str());
    CHECK(OpensFully(scratch.Get(), "locked"));
    CheckFullAccessForUserAlone(key);
}

TEST_CASE("full access with the privilege to restore does the same and enables the privilege first") {
    CScratchKey scratch;
    const HKEY key = scratch.Add("locked");
    scratch.Restrict(key, 0);
    GrantFullAccessWithRestore(HKEY_CURRENT_USER, (scratch.Subkey() + "\\locked").c_str());
    CHECK(OpensFully(scratch.Get(), "locked"));
    CheckFullAccessForUserAlone(key);
    CHECK(IsEnabled("SeRestorePrivilege"));
}

TEST_CASE("taking ownership makes the user the owner, and gives the privileges back") {
    CScratchKey scratch;
    const HKEY key = scratch.Add("foreign");
    GiveToEveryone(key);
    TakeKeyOwnership(HKEY_CURRENT_USER, (scratch.Subkey() + "\\foreign").c_str());
    CKeySecurity security(key);
    CHECK(::EqualSid(security.Owner(), CUser().Identifier()) != FALSE);
    CHECK_FALSE(IsEnabled("SeTakeOwnershipPrivilege"));
    CHECK_FALSE(IsEnabled("SeRestorePrivilege"));
}

TEST_CASE("the four roots with a short name are supported, others are left alone") {
    struct Row {
        HKEY root;
        const char* path;
        bool isSupported;
    };
    // HKEY_LOCAL_MACHINE and HKEY_USERS take no keys of their own.
    const Row rows[] = {{HKEY_CLASSES_ROOT, "VellumorLocked", true},
                        {HKEY_CURRENT_USER, "VellumorLocked", true},
                        {HKEY_LOCAL_MACHINE, "Software\\VellumorLocked", true},
                        {HKEY_USERS, ".Default\\VellumorLocked", true},
                        {HKEY_CURRENT_CONFIG, "Software\\VellumorLocked", false}};
    for (const Row& row : rows) {
        CScratchKey scratch(row.root, row.path);
        scratch.Restrict(scratch.Get(), KEY_READ);
        ForceKeyAccess(row.root, row.path);
        CHECK(OpensFully(row.root, row.path) == row.isSupported);
    }
}

TEST_CASE("a root itself, an absent key and no key at all are left alone") {
    const DWORD before = CKeySecurity(HKEY_CURRENT_USER).List()->AceCount;
    ForceKeyAccess(HKEY_CURRENT_USER, "");
    ForceKeyAccess(HKEY_CURRENT_USER, nullptr);
    ForceKeyAccess(HKEY_CURRENT_USER, "absent\\key");
    CHECK(CKeySecurity(HKEY_CURRENT_USER).List()->AceCount == before);
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, "absent"));
}

TEST_CASE("of a link the link is taken over, and its target keeps its security") {
    CScratchKey scratch;
    const HKEY target = scratch.Add("target");
    scratch.AddLink("link", ObjectName(target));
    const WORD entries = CKeySecurity(target).List()->AceCount;
    REQUIRE(entries != 1);
    ForceKeyAccess(HKEY_CURRENT_USER, (scratch.Subkey() + "\\link").c_str());
    CHECK(CKeySecurity(target).List()->AceCount == entries);
    CUniqueKey link;
    REQUIRE(::RegOpenKeyExA(scratch.Get(), "link", REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, link.Receive()) ==
            ERROR_SUCCESS);
    CheckFullAccessForUserAlone(link.Get());
}

TEST_CASE("a privilege is enabled and disabled, and one that nobody knows is refused") {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, token.Receive()) != FALSE);
    for (const char* name :
         {"SeBackupPrivilege", "SeRestorePrivilege", "SeShutdownPrivilege", "SeTakeOwnershipPrivilege"}) {
        CHECK(SetTokenPrivilege(token.Get(), name, true));
        CHECK(IsEnabled(name));
        CHECK(SetTokenPrivilege(token.Get(), name, false));
        CHECK_FALSE(IsEnabled(name));
        EnablePrivilege(name);
        CHECK(IsEnabled(name));
    }
    CHECK_FALSE(SetTokenPrivilege(token.Get(), "SeNoSuchPrivilege", true));
    CHECK_FALSE(SetTokenPrivilege(nullptr, "SeBackupPrivilege", true));
}

TEST_CASE("a privilege that the token does not hold counts as not enabled") {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, token.Receive()) != FALSE);
    CHECK_FALSE(SetTokenPrivilege(token.Get(), "SeCreateTokenPrivilege", true));
}
