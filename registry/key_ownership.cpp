#include "registry/key_ownership.h"

#include <aclapi.h>

#include <string>
#include <vector>

#include "platform/owners.h"
#include "platform/privileges.h"
#include "registry/key_link.h"

namespace {

constexpr char kTakeOwnership[] = "SeTakeOwnershipPrivilege";
constexpr char kRestore[] = "SeRestorePrivilege";

/// The key as the security calls name it, as in "MACHINE\Software\x"; empty: it is not to be changed.
std::string ObjectNameOf(HKEY root, const char* subkey) {
    struct Row {
        HKEY root;
        const char* shortName;
    };
    static const Row kRows[] = {{HKEY_CLASSES_ROOT, "CLASSES_ROOT"},
                                {HKEY_CURRENT_USER, "CURRENT_USER"},
                                {HKEY_LOCAL_MACHINE, "MACHINE"},
                                {HKEY_USERS, "USERS"}};
    // A root's own security is never ours to replace.
    if (subkey == nullptr || *subkey == '\0') return {};
    for (const Row& row : kRows)
        if (row.root == root) return std::string(row.shortName) + "\\" + subkey;
    return {};
}

/// This process's token and the identifier of its user.
class CProcessUser {
public:
    CProcessUser() {
        if (::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, m_token.Receive()) == FALSE) return;
        DWORD size = 0;
        ::GetTokenInformation(m_token.Get(), TokenUser, nullptr, 0, &size);
        m_block.resize(size);
        if (::GetTokenInformation(m_token.Get(), TokenUser, m_block.data(), size, &size) == FALSE)
            m_block.clear();
    }

    [[nodiscard]] bool IsKnown() const { return m_block.size() >= sizeof(TOKEN_USER); }
    [[nodiscard]] PSID Identifier() const {
        return reinterpret_cast<const TOKEN_USER*>(m_block.data())->User.Sid;
    }
    [[nodiscard]] HANDLE Token() const { return m_token.Get(); }

private:
    CUniqueHandle m_token;
    std::vector<unsigned char> m_block;  // a vector's memory is aligned for every type
};

/// A key whose security is being changed.
struct Target {
    HKEY root;
    const char* subkey;
    std::string objectName;
};

/// Opens the key itself, sets a part of its security there, and sets it a second time by the key's name,
/// which also brings what its subkeys inherit up to date. A link's name leads to another key, so the second
/// step is left out where the name does not reach the key that is open.
void SetSecurity(const Target& target, REGSAM access, SECURITY_INFORMATION part,
                 SECURITY_DESCRIPTOR& descriptor, PSID owner, PACL list) {
    CUniqueKey key;
    if (OpenKeyItself(target.root, target.subkey, access, key) != ERROR_SUCCESS) return;
    if (::RegSetKeySecurity(key.Get(), part, &descriptor) != ERROR_SUCCESS) return;
    CUniqueKey named;
    if (::RegOpenKeyExA(target.root, target.subkey, 0, access, named.Receive()) != ERROR_SUCCESS) return;
    if (!IsSameKey(named.Get(), key.Get())) return;
    std::string name = target.objectName;
    // Should this fail, the first step holds, and the next open of the key tells whether that suffices.
    (void)::SetNamedSecurityInfoA(name.data(), SE_REGISTRY_KEY, part, owner, nullptr, list, nullptr);
}

void MakeOwner(const Target& target, PSID user) {
    SECURITY_DESCRIPTOR descriptor{};
    if (::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) == FALSE) return;
    if (::SetSecurityDescriptorOwner(&descriptor, user, FALSE) == FALSE) return;
    SetSecurity(target, WRITE_OWNER, OWNER_SECURITY_INFORMATION, descriptor, user, nullptr);
}

void ReplaceAccessList(const Target& target, PSID user) {
    // The list's header and its one entry take 16 bytes beside the identifier.
    std::vector<unsigned char> block(::GetLengthSid(user) + 16);
    const auto list = reinterpret_cast<PACL>(block.data());
    if (::InitializeAcl(list, static_cast<DWORD>(block.size()), ACL_REVISION) == FALSE) return;
    if (::AddAccessAllowedAce(list, ACL_REVISION, KEY_ALL_ACCESS, user) == FALSE) return;
    SECURITY_DESCRIPTOR descriptor{};
    if (::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) == FALSE) return;
    if (::SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE) == FALSE) return;
    SetSecurity(target, WRITE_DAC, DACL_SECURITY_INFORMATION, descriptor, nullptr, list);
}

void Disable(HANDLE token, const char* privilege) {
    if (!SetTokenPrivilege(token, privilege, false)) return;  // it was not held
}

}  // namespace

void TakeKeyOwnership(HKEY root, const char* subkey) {
    const Target target{root, subkey, ObjectNameOf(root, subkey)};
    const CProcessUser user;
    if (target.objectName.empty() || !user.IsKnown()) return;
    if (SetTokenPrivilege(user.Token(), kTakeOwnership, true) &&
        SetTokenPrivilege(user.Token(), kRestore, true))
        MakeOwner(target, user.Identifier());
    // After a failure too: nothing later may run with rights that it did not ask for.
    Disable(user.Token(), kTakeOwnership);
    Disable(user.Token(), kRestore);
}

void GrantFullAccess(HKEY root, const char* subkey) {
    const Target target{root, subkey, ObjectNameOf(root, subkey)};
    const CProcessUser user;
    if (!target.objectName.empty() && user.IsKnown()) ReplaceAccessList(target, user.Identifier());
}

void GrantFullAccessWithRestore(HKEY root, const char* subkey) {
    const CProcessUser user;
    if (user.IsKnown() && SetTokenPrivilege(user.Token(), kRestore, true)) GrantFullAccess(root, subkey);
}

void ForceKeyAccess(HKEY root, const char* subkey) {
    TakeKeyOwnership(root, subkey);
    GrantFullAccess(root, subkey);
}
