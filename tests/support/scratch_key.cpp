#include "tests/support/scratch_key.h"

#include <doctest/doctest.h>

#include "tests/support/native_calls.h"

namespace {

std::string UniqueName() {
    static int count = 0;
    return "VellumorTest-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count);
}

std::string RootName(HKEY root) {
    if (root == HKEY_CLASSES_ROOT) return "\\HKEY_CLASSES_ROOT\\";
    if (root == HKEY_CURRENT_USER) return "\\HKEY_CURRENT_USER\\";
    if (root == HKEY_USERS) return "\\HKEY_USERS\\";
    if (root == HKEY_CURRENT_CONFIG) return "\\HKEY_CURRENT_CONFIG\\";
    REQUIRE(root == HKEY_LOCAL_MACHINE);
    return "\\HKEY_LOCAL_MACHINE\\";
}

}  // namespace

LSTATUS SetAccessList(HKEY key, REGSAM rights) {
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    alignas(DWORD) char sid[SECURITY_MAX_SID_SIZE];
    ::InitializeSid(sid, &world, 1);
    *::GetSidSubAuthority(sid, 0) = SECURITY_WORLD_RID;
    alignas(DWORD) char space[256];
    const auto list = reinterpret_cast<ACL*>(space);
    ::InitializeAcl(list, sizeof space, ACL_REVISION);
    if (rights != 0) ::AddAccessAllowedAce(list, ACL_REVISION, rights, sid);
    SECURITY_DESCRIPTOR descriptor;
    ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    ::SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
    return ::RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor);
}

CScratchKey::CScratchKey(HKEY root) {
    Create(root, (root == HKEY_CLASSES_ROOT ? "" : "Software\\") + UniqueName());
}

CScratchKey::CScratchKey(HKEY root, const std::string& subkey) { Create(root, subkey); }

CScratchKey::~CScratchKey() {
    for (HKEY key : m_restricted) CHECK(SetAccessList(key, KEY_ALL_ACCESS) == ERROR_SUCCESS);
    DeleteTree(Get());
}

void CScratchKey::Create(HKEY root, const std::string& subkey) {
    DWORD disposition = 0;
    REQUIRE(::RegCreateKeyExA(root, subkey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, m_key.Receive(),
                              &disposition) == ERROR_SUCCESS);
    if (disposition != REG_CREATED_NEW_KEY) m_key.Reset();  // not ours to remove
    REQUIRE(disposition == REG_CREATED_NEW_KEY);
    m_path = RootName(root) + subkey;
    m_subkey = subkey;
}

HKEY CScratchKey::Add(HKEY parent, const std::string& name) {
    CUniqueKey& key = m_subkeys.emplace_back();
    REQUIRE(::RegCreateKeyExA(parent, name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(),
                              nullptr) == ERROR_SUCCESS);
    return key.Get();
}

void CScratchKey::AddLink(const std::string& name, const std::wstring& target) {
    (void)MakeLink(Get(), name, target);
}

void CScratchKey::Restrict(HKEY key, REGSAM rights) {
    m_restricted.push_back(key);
    CHECK(SetAccessList(key, rights) == ERROR_SUCCESS);
}

void CScratchKey::DeleteTree(HKEY key) {
    char name[256];
    for (DWORD index = 0;;) {
        DWORD length = sizeof name;
        if (::RegEnumKeyExA(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        CUniqueKey child;
        if (::RegOpenKeyExA(key, name, REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, child.Receive()) ==
            ERROR_SUCCESS)
            DeleteTree(child.Get());
        else
            ++index;  // a name with a zero in it: whoever made it holds its handle
    }
    DeleteOpenKey(key);
}

void SetText(HKEY key, const std::string& name, const std::string& text, DWORD type) {
    SetBytes(key, name, type, text + '\0');
}

void SetBytes(HKEY key, const std::string& name, DWORD type, const std::string& bytes) {
    REQUIRE(::RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS);
}

CUniqueKey MakeLink(HKEY parent, const std::string& name, const std::wstring& target) {
    CUniqueKey link;
    REQUIRE(::RegCreateKeyExA(parent, name.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK, KEY_ALL_ACCESS,
                              nullptr, link.Receive(), nullptr) == ERROR_SUCCESS);
    // A link's target is stored without a terminator.
    REQUIRE(::RegSetValueExW(link.Get(), L"SymbolicLinkValue", 0, REG_LINK,
                             reinterpret_cast<const BYTE*>(target.data()),
                             static_cast<DWORD>(target.size() * sizeof(wchar_t))) == ERROR_SUCCESS);
    return link;
}
