#include <aclapi.h>
#include <doctest/doctest.h>

#include <vector>

#include "platform/privileges.h"
#include "registry/key_ownership.h"
#include "tests/repair/key_security.h"
#include "tests/support/call_hook.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

template <class Function>
Function* Before(const CCallHook& hook) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(hook.Before()));
}

/// While it lives, records the steps of an operation as lines, and lets those fail that it is told.
class CSteps {
public:
    CSteps() { s_this = this; }
    CSteps(const CSteps&) = delete;
    CSteps& operator=(const CSteps&) = delete;
    ~CSteps() { s_this = nullptr; }

    std::vector<std::string> lines;
    REGSAM access = 0;  // of all opens together
    std::string deniedPrivilege;
    LSTATUS keyResult = ERROR_SUCCESS;

private:
    static BOOL WINAPI Adjust(HANDLE token, BOOL all, PTOKEN_PRIVILEGES wanted, DWORD size,
                              PTOKEN_PRIVILEGES previous, PDWORD needed) {
        char name[64] = "";
        DWORD length = sizeof name;
        CHECK(::LookupPrivilegeNameA(nullptr, &wanted->Privileges[0].Luid, name, &length) != FALSE);
        const bool enables = (wanted->Privileges[0].Attributes & SE_PRIVILEGE_ENABLED) != 0;
        s_this->lines.push_back((enables ? "enable " : "disable ") + std::string(name));
        if (s_this->deniedPrivilege == name) {
            ::SetLastError(ERROR_NOT_ALL_ASSIGNED);
            return TRUE;
        }
        return Before<decltype(::AdjustTokenPrivileges)>(s_this->m_adjust)(token, all, wanted, size, previous,
                                                                           needed);
    }
    static LSTATUS WINAPI Open(HKEY parent, LPCSTR subkey, DWORD options, REGSAM rights, PHKEY key) {
        s_this->access |= rights;
        return Before<decltype(::RegOpenKeyExA)>(s_this->m_open)(parent, subkey, options, rights, key);
    }
    static LSTATUS WINAPI SetKey(HKEY key, SECURITY_INFORMATION part, PSECURITY_DESCRIPTOR descriptor) {
        s_this->lines.push_back("set " + std::to_string(part));
        if (s_this->keyResult != ERROR_SUCCESS) return s_this->keyResult;
        return Before<decltype(::RegSetKeySecurity)>(s_this->m_setKey)(key, part, descriptor);
    }
    static DWORD WINAPI SetNamed(LPSTR name, SE_OBJECT_TYPE type, SECURITY_INFORMATION part, PSID owner,
                                 PSID group, PACL list, PACL audit) {
        std::string line = "set " + std::to_string(part) + " of " + std::to_string(type) + " " + name;
        if (owner != nullptr) line += " owner";
        if (group != nullptr) line += " group";
        if (list != nullptr) line += " list of " + std::to_string(list->AceCount);
        if (audit != nullptr) line += " audit";
        s_this->lines.push_back(line);
        return Before<decltype(::SetNamedSecurityInfoA)>(s_this->m_setNamed)(name, type, part, owner, group,
                                                                             list, audit);
    }

    static inline CSteps* s_this = nullptr;
    CCallHook m_adjust{"AdjustTokenPrivileges", Address(&Adjust)};
    CCallHook m_open{"RegOpenKeyExA", Address(&Open)};
    CCallHook m_setKey{"RegSetKeySecurity", Address(&SetKey)};
    CCallHook m_setNamed{"SetNamedSecurityInfoA", Address(&SetNamed)};
};

using Texts = std::vector<std::string>;

/// A key that everybody owns and may only read.
struct ForeignKey : CScratchKey {
    explicit ForeignKey(HKEY root = HKEY_CURRENT_USER) : CScratchKey(root) {
        GiveToEveryone(Get());
        Restrict(Get(), KEY_READ);
    }
    [[nodiscard]] bool IsOurs() const {
        return ::EqualSid(CKeySecurity(Get()).Owner(), CUser().Identifier()) != FALSE;
    }
    [[nodiscard]] bool OpensFully(HKEY root = HKEY_CURRENT_USER) const {
        CUniqueKey key;
        return ::RegOpenKeyExA(root, Subkey().c_str(), 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS;
    }
};

const Texts kOwnershipWithoutKey = {"enable SeTakeOwnershipPrivilege", "enable SeRestorePrivilege",
                                    "disable SeTakeOwnershipPrivilege", "disable SeRestorePrivilege"};

}  // namespace

TEST_CASE("ownership is set on the key and by its name, between enabling and disabling two privileges") {
    const ForeignKey key;
    Texts lines;
    {
        CSteps steps;
        TakeKeyOwnership(HKEY_CURRENT_USER, key.Subkey().c_str());
        lines = steps.lines;
        CHECK(steps.access == 0x80000);
    }
    CHECK(lines == Texts{"enable SeTakeOwnershipPrivilege", "enable SeRestorePrivilege", "set 1",
                         "set 1 of 4 CURRENT_USER\\" + key.Subkey() + " owner",
                         "disable SeTakeOwnershipPrivilege", "disable SeRestorePrivilege"});
    CHECK(key.IsOurs());
    CHECK_FALSE(key.OpensFully());
}

TEST_CASE("the list is set on the key and by its name, which begins with the root's short name") {
    struct Row {
        HKEY root;
        const char* shortName;
    };
    const Row rows[] = {{HKEY_CLASSES_ROOT, "CLASSES_ROOT\\"},
                        {HKEY_CURRENT_USER, "CURRENT_USER\\"},
                        {HKEY_LOCAL_MACHINE, "MACHINE\\"}};
    for (const Row& row : rows) {
        const ForeignKey key(row.root);
        Texts lines;
        {
            CSteps steps;
            GrantFullAccess(row.root, key.Subkey().c_str());
            lines = steps.lines;
            CHECK(steps.access == 0x40000);
        }
        CHECK(lines == Texts{"set 4", "set 4 of 4 " + (row.shortName + key.Subkey()) + " list of 1"});
        CHECK(key.OpensFully(row.root));
        CHECK_FALSE(key.IsOurs());
    }
}

TEST_CASE("a key of another user's is named below USERS") {
    CScratchKey key(HKEY_USERS, R"(.Default\VellumorLocked)");
    Texts lines;
    {
        CSteps steps;
        GrantFullAccess(HKEY_USERS, key.Subkey().c_str());
        lines = steps.lines;
    }
    CHECK(lines == Texts{"set 4", R"(set 4 of 4 USERS\.Default\VellumorLocked list of 1)"});
}

TEST_CASE("full access with restore enables the privilege first and leaves it on") {
    const ForeignKey key;
    Texts lines;
    {
        CSteps steps;
        GrantFullAccessWithRestore(HKEY_CURRENT_USER, key.Subkey().c_str());
        lines = steps.lines;
    }
    CHECK(lines == Texts{"enable SeRestorePrivilege", "set 4",
                         "set 4 of 4 CURRENT_USER\\" + key.Subkey() + " list of 1"});
}

TEST_CASE("without the privilege to restore, full access with restore changes nothing") {
    const ForeignKey key;
    Texts lines;
    {
        CSteps steps;
        steps.deniedPrivilege = "SeRestorePrivilege";
        GrantFullAccessWithRestore(HKEY_CURRENT_USER, key.Subkey().c_str());
        lines = steps.lines;
    }
    CHECK(lines == Texts{"enable SeRestorePrivilege"});
    CHECK_FALSE(key.OpensFully());
}

TEST_CASE("without one of its privileges the owner stays, and full access is granted all the same") {
    for (const char* privilege : {"SeTakeOwnershipPrivilege", "SeRestorePrivilege"}) {
        const ForeignKey key;
        {
            CSteps steps;
            steps.deniedPrivilege = privilege;
            ForceKeyAccess(HKEY_CURRENT_USER, key.Subkey().c_str());
        }
        CHECK_FALSE(key.IsOurs());
        CHECK(key.OpensFully());
        CHECK_FALSE(IsEnabled("SeTakeOwnershipPrivilege"));
        CHECK_FALSE(IsEnabled("SeRestorePrivilege"));
    }
}

TEST_CASE("a key that takes no owner is not tried by its name, and the privileges go off again") {
    const ForeignKey key;
    Texts lines;
    {
        CSteps steps;
        steps.keyResult = ERROR_ACCESS_DENIED;
        TakeKeyOwnership(HKEY_CURRENT_USER, key.Subkey().c_str());
        GrantFullAccess(HKEY_CURRENT_USER, key.Subkey().c_str());
        lines = steps.lines;
    }
    CHECK(lines == Texts{"enable SeTakeOwnershipPrivilege", "enable SeRestorePrivilege", "set 1",
                         "disable SeTakeOwnershipPrivilege", "disable SeRestorePrivilege", "set 4"});
    CHECK_FALSE(key.IsOurs());
    CHECK_FALSE(key.OpensFully());
}

TEST_CASE("a key that is not there is asked for and nothing set") {
    Texts lines;
    {
        CSteps steps;
        ForceKeyAccess(HKEY_CURRENT_USER, "absent\\key");
        lines = steps.lines;
    }
    CHECK(lines == kOwnershipWithoutKey);
}

TEST_CASE("of a link nothing is set by its name, which leads to another key") {
    CUniqueKey link;
    CScratchKey scratch;
    link = MakeLink(scratch.Get(), "link", ObjectName(scratch.Add("target")));
    Texts lines;
    {
        CSteps steps;
        GrantFullAccess(HKEY_CURRENT_USER, (scratch.Subkey() + R"(\link)").c_str());
        lines = steps.lines;
    }
    CHECK(lines == Texts{"set 4"});
}

TEST_CASE("no operation leaves a handle open, whether it succeeds or fails") {
    const ForeignKey key;
    const auto runAll = [&] {
        for (const std::string& subkey : {key.Subkey(), std::string("absent\\key"), std::string()}) {
            ForceKeyAccess(HKEY_CURRENT_USER, subkey.c_str());
            GrantFullAccessWithRestore(HKEY_CURRENT_USER, subkey.c_str());
            ForceKeyAccess(HKEY_CURRENT_CONFIG, subkey.c_str());
        }
        EnablePrivilege("SeBackupPrivilege");
        EnablePrivilege("SeNoSuchPrivilege");
        CSteps steps;
        steps.keyResult = ERROR_ACCESS_DENIED;
        ForceKeyAccess(HKEY_CURRENT_USER, key.Subkey().c_str());
    };
    runAll();  // what the system opens once is open now
    const std::size_t handles = OwnHandles().size();
    for (int round = 0; round < 5; ++round) runAll();
    CHECK(OwnHandles().size() == handles);
}
