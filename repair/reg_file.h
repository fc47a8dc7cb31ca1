#pragma once

#include <windows.h>

#include <span>

#include "platform/owners.h"

/// Where an export that goes wrong before it begins says so.
namespace export_errors {

inline constexpr DWORD kUnknownRoot = 1010;   // the root name is not one of those that can be exported
inline constexpr DWORD kKeyNotOpened = 1011;  // the key does not open for reading

}  // namespace export_errors

/// The largest data, in bytes, that an export takes in.
constexpr DWORD kExportedDataBytes = 16384;

/// What an export does with a key that is a symbolic link. Links below the key are never followed.
enum class ExportedLink {
    Followed,  // the key that it leads to is exported under the link's name
    Itself,    // the link is exported, as a key whose one value says where it leads
};

/// Writes registry branches into files of the registry editor's export format, version 5.00. What is written
/// reads back as it was, with these exceptions, which callers count on: expandable text comes back as plain
/// text; a value whose name is longer than 255 characters or whose data are longer than 16384 bytes ends its
/// key's values there and leaves out the key's subkeys; a subkey that does not open is left out.
class CRegFile {
public:
    virtual ~CRegFile() = default;

    /// Appends a branch, a key with its values and all its subkeys, to a file, which is made if need be.
    /// @param fileName  full path.
    /// @param keyText   long root name, backslash, subkey path; null: all of HKEY_LOCAL_MACHINE and then of
    ///                  HKEY_USERS.
    /// @return 0, also when the file could not be written: repairs go ahead without it. 1010 or 1011 when the
    /// branch could not be read; then the file is not touched.
    DWORD ExportKey(const char* fileName, const char* keyText, ExportedLink link = ExportedLink::Followed);

    /// Whether all that was to be written so far has been written.
    [[nodiscard]] bool IsWritten() const { return m_isWritten; }
    /// Whether all could be read: each value and, of a branch with its links themselves, each subkey. What is
    /// merely too large for an export does not count.
    [[nodiscard]] bool IsRead() const { return m_isRead; }

    /// Appends a block of one key with its default value alone. Failures are passed over, as above.
    void AppendDefaultValue(const char* fileName, const char* keyText, DWORD type,
                            std::span<const unsigned char> data);

    /// How OpenKeyByText opens a key: to read its values and subkeys.
    static constexpr int kReadMode = 0;

    /// Opens the key that a text names. Root names are compared ignoring letter case; short forms of them are
    /// not known.
    /// @param mode  kReadMode; any other is refused.
    /// @return 0, 1010 or 1011, as above.
    [[nodiscard]] DWORD OpenKeyByText(const char* keyText, int mode, CUniqueKey& key,
                                      ExportedLink link = ExportedLink::Followed);

private:
    bool m_isWritten = true;
    bool m_isRead = true;
};
