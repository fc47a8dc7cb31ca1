#include "repair/reg_file.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "registry/key_link.h"
#include "registry/key_path.h"
#include "registry/letter_case_rules.h"
#include "registry/registry_access.h"
#include "registry/subkey_order.h"
#include "repair/export_text_rules.h"

namespace {

constexpr REGSAM kExportAccess = KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS;
static_assert(kExportAccess == 9);

// These sizes decide where a key's block ends early.
constexpr DWORD kValueNameBytes = 256;
constexpr DWORD kSubkeyNameBytes = 256;

// Offered first: for a larger buffer the system itself takes memory with every call.
constexpr DWORD kUsualDataBytes = 512;
static_assert(kUsualDataBytes <= kExportedDataBytes);

class CFileSink : public CByteSink {
public:
    /// @param isWritten  becomes false when something is not written.
    CFileSink(HANDLE file, bool& isWritten) : m_file(file), m_isWritten(isWritten) {}

    [[nodiscard]] bool Write(const char* bytes, std::size_t count) override {
        DWORD written = 0;
        const bool isTaken =
            ::WriteFile(m_file, bytes, static_cast<DWORD>(count), &written, nullptr) != FALSE;
        if (!isTaken || written != count) m_isWritten = false;
        return isTaken;
    }

private:
    HANDLE m_file;
    bool& m_isWritten;
};

/// How many values and subkeys a key has. Knowing that saves the two calls that would only tell that there
/// are no more; most of what an export costs are its calls.
struct KeySize {
    KeySize() = default;
    explicit KeySize(HKEY key) {
        if (::RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr,
                               nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            values = subkeys = kUnknown;
    }

    static constexpr DWORD kUnknown = MAXDWORD;  // the walk then goes on until the system ends it
    DWORD values = kUnknown;
    DWORD subkeys = kUnknown;
};

/// One export under way: its text and the buffers that every value is read into.
class CExport {
public:
    CExport(CByteSink& sink, ExportedLink link) : m_text(sink), m_link(link) {}

    [[nodiscard]] CExportText& Text() { return m_text; }
    [[nodiscard]] bool IsRead() const { return m_isRead; }

    /// @param isMerged  whether the branch lies in the root that the system merges of two others. How it
    ///                  counts there is not documented, so all is walked to its end.
    void WriteBranch(HKEY key, std::string_view path, bool isMerged) {
        m_path = path;
        m_isMerged = isMerged;
        WriteBranchAtPath(key);
    }

private:
    void WriteBranchAtPath(HKEY key) {
        const KeySize size = m_isMerged ? KeySize() : KeySize(key);
        LSTATUS end = ReadValue(key, 0, size.values);
        if (end == ERROR_SUCCESS && IsLinkThatStays()) return;
        m_text.WriteKeyLine(m_path);
        for (DWORD index = 0; end == ERROR_SUCCESS; end = ReadValue(key, ++index, size.values)) WriteValue();
        NoteEnd(end);
        m_text.WriteBlankLine();
        // Deliberate: a key whose values could not all be read is left without its subkeys, too.
        if (end == ERROR_NO_MORE_ITEMS) WriteSubkeys(key, size.subkeys);
    }

    /// Reads a key's next value, or what ends the walk of its values.
    [[nodiscard]] LSTATUS ReadValue(HKEY key, DWORD index, DWORD count) {
        if (index >= count) return ERROR_NO_MORE_ITEMS;
        // All of the buffer is zero but for what the former value left in it.
        std::memset(m_data, 0, m_usedBytes);
        m_usedBytes = sizeof m_data;
        m_nameBytes = sizeof m_name;
        DWORD dataBytes = kUsualDataBytes;
        LSTATUS result =
            ::RegEnumValueA(key, index, m_name, &m_nameBytes, nullptr, &m_type, m_data, &dataBytes);
        if (result == ERROR_MORE_DATA) {
            m_nameBytes = sizeof m_name;
            dataBytes = sizeof m_data;
            result = ::RegEnumValueA(key, index, m_name, &m_nameBytes, nullptr, &m_type, m_data, &dataBytes);
        }
        if (result == ERROR_SUCCESS) m_usedBytes = dataBytes;
        return result;
    }

    [[nodiscard]] std::string_view ValueName() const { return {m_name, m_nameBytes}; }

    /// Whether the value that was read makes its key a link in a branch that stays. So does the link then,
    /// and its key line alone would lead a replay to another key, or make that one.
    [[nodiscard]] bool IsLinkThatStays() const {
        return m_link == ExportedLink::Followed && m_type == REG_LINK && ValueName() == kLinkValueName;
    }

    /// Writes the value that was read, unless a replay would write it elsewhere: what stands before a zero
    /// byte names another value.
    void WriteValue() {
        if (ValueName().find('\0') != std::string_view::npos || IsLinkThatStays()) return;
        m_text.WriteValue(ValueName(), m_type, {m_data, m_usedBytes});
    }

    /// Notes what ended a walk.
    void NoteEnd(LSTATUS result) {
        if (result != ERROR_NO_MORE_ITEMS && result != ERROR_MORE_DATA) m_isRead = false;
    }

    void WriteSubkeys(HKEY key, DWORD count) {
        const std::size_t length = m_path.size();
        char name[kSubkeyNameBytes];
        CSubkeyOrder order;
        for (DWORD index = 0; index < count; ++index) {
            const LSTATUS found = ::RegEnumKeyA(key, index, name, sizeof name);
            if (found != ERROR_SUCCESS) return NoteEnd(found);
            // A name that begins with a zero byte would open the key itself, and so without end.
            if (!CanOpenByName(name, static_cast<DWORD>(std::strlen(name)))) continue;
            if (!order.IsFirst(key, index, name)) continue;
            CUniqueKey subkey;
            if (OpenKeyItself(key, name, kExportAccess, subkey) != ERROR_SUCCESS) {
                // Where the branch stays, so does this subkey.
                if (m_link == ExportedLink::Itself) m_isRead = false;
                continue;
            }
            m_path += '\\';
            m_path += name;
            WriteBranchAtPath(subkey.Get());
            m_path.resize(length);
        }
    }

    CExportText m_text;
    ExportedLink m_link;
    std::string m_path;
    bool m_isMerged = false;
    bool m_isRead = true;
    char m_name[kValueNameBytes];
    DWORD m_nameBytes = 0;
    DWORD m_type = REG_NONE;
    unsigned char m_data[kExportedDataBytes];
    DWORD m_usedBytes = sizeof m_data;  // of the data buffer, which may hold anything up to there
};

CUniqueFile OpenFile(const char* fileName) {
    return CUniqueFile(
        ::CreateFileA(fileName, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Goes to the end of the file and writes what separates the export from what is there.
/// @param file  invalid where it could not be opened.
/// @return false where the end cannot be reached: writing elsewhere would overwrite an earlier export.
bool OpenText(HANDLE file, CExportText& text) {
    LARGE_INTEGER size{};
    if (file == INVALID_HANDLE_VALUE || ::SetFilePointerEx(file, {}, &size, FILE_END) == FALSE) return false;
    size.QuadPart == 0 ? text.WriteHeader() : text.WriteBlankLine();
    return true;
}

/// The root that a text begins with, in whatever letters; nothing: no known one.
std::optional<HKEY> RootOf(std::string_view keyText) {
    std::string root(keyText.substr(0, keyText.find('\\')));
    std::ranges::transform(root, root.begin(), UpperCase);
    const std::optional<KeyLocation> location = SplitKeyPath("\\" + root);
    if (!location.has_value()) return std::nullopt;
    return location->root;
}

}  // namespace

DWORD CRegFile::OpenKeyByText(const char* keyText, int mode, CUniqueKey& key, ExportedLink link) {
    const std::string_view text(keyText);
    const std::size_t end = text.find('\\');
    const std::optional<HKEY> root = RootOf(text);
    // Performance counters are a root to enumerate, but no keys that could be written back.
    if (!root.has_value() || *root == HKEY_PERFORMANCE_DATA) return export_errors::kUnknownRoot;
    if (mode != kReadMode) return export_errors::kKeyNotOpened;
    const std::string subkey(end == std::string_view::npos ? std::string_view() : text.substr(end + 1));
    const LSTATUS opened = link == ExportedLink::Itself
                               ? OpenKeyItself(*root, subkey.c_str(), kExportAccess, key)
                               : ::RegOpenKeyExA(*root, subkey.c_str(), 0, kExportAccess, key.Receive());
    return opened == ERROR_SUCCESS ? ERROR_SUCCESS : export_errors::kKeyNotOpened;
}

DWORD CRegFile::ExportKey(const char* fileName, const char* keyText, ExportedLink link) {
    CUniqueKey key;
    if (keyText != nullptr) {
        const DWORD opened = OpenKeyByText(keyText, kReadMode, key, link);
        if (opened != ERROR_SUCCESS) return opened;
    }
    const CUniqueFile file = OpenFile(fileName);
    CFileSink sink(file.Get(), m_isWritten);
    const auto branches = std::make_unique<CExport>(sink, link);
    if (!OpenText(file.Get(), branches->Text())) {
        m_isWritten = false;
        return ERROR_SUCCESS;
    }
    if (keyText != nullptr) {
        branches->WriteBranch(key.Get(), keyText, RootOf(keyText) == HKEY_CLASSES_ROOT);
    } else {
        branches->WriteBranch(HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE", false);
        branches->WriteBranch(HKEY_USERS, "HKEY_USERS", false);
    }
    branches->Text().FlushOutput();
    if (!branches->IsRead()) m_isRead = false;
    return ERROR_SUCCESS;
}

void CRegFile::AppendDefaultValue(const char* fileName, const char* keyText, DWORD type,
                                  std::span<const unsigned char> data) {
    const CUniqueFile file = OpenFile(fileName);
    CFileSink sink(file.Get(), m_isWritten);
    CExportText text(sink);
    if (!OpenText(file.Get(), text)) {
        m_isWritten = false;
        return;
    }
    text.WriteKeyLine(keyText);
    text.WriteValue("", type, data);
    text.WriteBlankLine();
    text.FlushOutput();
}
