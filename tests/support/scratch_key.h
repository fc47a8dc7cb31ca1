#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/owners.h"

/// A key that a test made itself; its tree is removed at the end, whatever the test put into it.
class CScratchKey {
public:
    /// Makes a key of a unique name: in the software area of a user or machine root, else right under the
    /// root.
    explicit CScratchKey(HKEY root = HKEY_CURRENT_USER);
    /// Makes exactly this key, which must not exist yet.
    CScratchKey(HKEY root, const std::string& subkey);
    CScratchKey(const CScratchKey&) = delete;
    CScratchKey& operator=(const CScratchKey&) = delete;
    ~CScratchKey();

    [[nodiscard]] HKEY Get() const { return m_key.Get(); }
    /// As in "\HKEY_CURRENT_USER\Software\VellumorTest-8-1".
    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// The same without the root.
    [[nodiscard]] const std::string& Subkey() const { return m_subkey; }

    /// Makes a subkey; the handle has all access and stays open as long as this object lives.
    HKEY Add(const std::string& name) { return Add(Get(), name); }
    HKEY Add(HKEY parent, const std::string& name);
    /// Makes a subkey that is a symbolic link to the key of an object name.
    void AddLink(const std::string& name, const std::wstring& target);
    /// Lets everybody open a key of this tree for these rights only; 0: the access list is empty.
    void Restrict(HKEY key, REGSAM rights);
    /// Removes a key and what is below it, links by themselves.
    static void DeleteTree(HKEY key);

private:
    void Create(HKEY root, const std::string& subkey);

    std::string m_path;
    std::string m_subkey;
    CUniqueKey m_key;
    std::vector<CUniqueKey> m_subkeys;
    std::vector<HKEY> m_restricted;
};

/// Lets everybody open a key for these rights only; 0: the access list is empty. @return the system's code.
[[nodiscard]] LSTATUS SetAccessList(HKEY key, REGSAM rights);

/// Sets a value; the text's terminator is stored with it.
void SetText(HKEY key, const std::string& name, const std::string& text, DWORD type = REG_SZ);
/// Sets a value to exactly these bytes.
void SetBytes(HKEY key, const std::string& name, DWORD type, const std::string& bytes);

/// Makes a symbolic link; its own key, to be removed by DeleteOpenKey.
[[nodiscard]] CUniqueKey MakeLink(HKEY parent, const std::string& name, const std::wstring& target);

/// The object name of a key that opens and then refuses every query and enumeration as an invalid handle.
inline constexpr const wchar_t* kUnreadableKey =
    L"\\Registry\\Machine\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Perflib\\009";
