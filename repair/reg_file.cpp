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
    /// @param isWhole  becomes false when something is not written.
    CFileSink(HANDLE file, bool& isWhole) : m_file(file), m_isWhole(isWhole) {}

    [[nodiscard]] bool Write(const char* bytes, std::size_t count) override {
        DWORD written = 0;
        const bool isTaken =
            ::WriteFile(m_file, bytes, static_cast<DWORD>(count), &written, nullptr) != FALSE;
        if (!isTaken || written != count) m_isWhole = false;
        return isTaken;
    }

private:
    HANDLE m_file;
    bool& m_isWhole;
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
    explicit CExport(CByteSink& sink) : m_text(sink) {}

    [[nodiscard]] CExportText& Text() { return m_text; }

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
        m_text.WriteKeyLine(m_path);
        const LSTATUS end = WriteValues(key, size.values);
        m_text.WriteBlankLine();
        // Deliberate: a key whose values could not all be read is left without its subkeys, too.
        if (end == ERROR_NO_MORE_ITEMS) WriteSubkeys(key, size.subkeys);
    }

    /// @return what ended the walk.
    [[nodiscard]] LSTATUS WriteValues(HKEY key, DWORD count) {
        for (DWORD index = 0; index < count; ++index) {
            // All of the buffer is zero but for what the former value left in it.
            std::memset(m_data, 0, m_usedBytes);
            m_usedBytes = sizeof m_data;
            DWORD nameBytes = sizeof m_name;
            DWORD dataBytes = kUsualDataBytes;
            DWORD type = REG_NONE;
            LSTATUS result =
                ::RegEnumValueA(key, index, m_name, &nameBytes, nullptr, &type, m_data, &dataBytes);
            if (result == ERROR_MORE_DATA) {
                nameBytes = sizeof m_name;
                dataBytes = sizeof m_data;
                result = ::RegEnumValueA(key, index, m_name, &nameBytes, nullptr, &type, m_data, &dataBytes);
            }
            if (result != ERROR_SUCCESS) return result;
            m_usedBytes = dataBytes;
            const std::string_view name(m_name, nameBytes);
            // Deliberate: without a name it would come back as the key's default value, and take its place.
            if (name.starts_with('\0')) continue;
            m_text.WriteValue(name.substr(0, name.find('\0')), type, {m_data, dataBytes});
        }
        return ERROR_NO_MORE_ITEMS;
    }

    void WriteSubkeys(HKEY key, DWORD count) {
        const std::size_t length = m_path.size();
        char name[kSubkeyNameBytes];
        for (DWORD index = 0; index < count; ++index) {
            if (::RegEnumKeyA(key, index, name, sizeof name) != ERROR_SUCCESS) return;
            // A name that begins with a zero byte: without a name, the key itself is opened, and so without
            // end.
            if (name[0] == '\0') continue;
            CUniqueKey subkey;
            if (OpenKeyItself(key, name, kExportAccess, subkey) != ERROR_SUCCESS) continue;
            m_path += '\\';
            m_path += name;
            WriteBranchAtPath(subkey.Get());
            m_path.resize(length);
        }
    }

    CExportText m_text;
    std::string m_path;
    bool m_isMerged = false;
    char m_name[kValueNameBytes];
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
    CFileSink sink(file.Get(), m_isWhole);
    const auto branches = std::make_unique<CExport>(sink);
    if (!OpenText(file.Get(), branches->Text())) {
        m_isWhole = false;
        return ERROR_SUCCESS;
    }
    if (keyText != nullptr) {
        branches->WriteBranch(key.Get(), keyText, RootOf(keyText) == HKEY_CLASSES_ROOT);
    } else {
        branches->WriteBranch(HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE", false);
        branches->WriteBranch(HKEY_USERS, "HKEY_USERS", false);
    }
    branches->Text().FlushOutput();
    return ERROR_SUCCESS;
}

void CRegFile::AppendDefaultValue(const char* fileName, const char* keyText, DWORD type,
                                  std::span<const unsigned char> data) {
    const CUniqueFile file = OpenFile(fileName);
    CFileSink sink(file.Get(), m_isWhole);
    CExportText text(sink);
    if (!OpenText(file.Get(), text)) {
        m_isWhole = false;
        return;
    }
    text.WriteKeyLine(keyText);
    text.WriteValue("", type, data);
    text.WriteBlankLine();
    text.FlushOutput();
}
