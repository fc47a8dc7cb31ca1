#include "repair/undo_record.h"

#include <optional>

#include "registry/key_link.h"
#include "repair/undo_companion.h"

namespace {

/// Whether a key lies in the branch of another. A name that is not known may be anything.
bool MayContain(const std::wstring& branch, const std::wstring& key) {
    if (branch.empty() || key.empty()) return true;
    if (key.size() < branch.size()) return false;
    if (::lstrcmpiW(key.substr(0, branch.size()).c_str(), branch.c_str()) != 0) return false;
    return key.size() == branch.size() || key[branch.size()] == L'\\';
}

/// A file's size in bytes; 0 where there is none, nothing where it is not known.
std::optional<LONGLONG> FileSize(const std::string& fileName) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (::GetFileAttributesExA(fileName.c_str(), GetFileExInfoStandard, &data) == FALSE) {
        if (::GetLastError() == ERROR_FILE_NOT_FOUND) return 0;
        return std::nullopt;
    }
    return static_cast<LONGLONG>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

void CutFile(const std::string& fileName, LONGLONG size) {
    const CUniqueFile file(::CreateFileA(fileName.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER end{};
    end.QuadPart = size;
    if (file && ::SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) != FALSE) ::SetEndOfFile(file.Get());
}

}  // namespace

DWORD CUndoRecord::Export(const std::string& keyText, ExportedLink link) {
    CRegFile file;
    CUniqueKey key;
    const DWORD opened = file.OpenKeyByText(keyText.c_str(), CRegFile::kReadMode, key, link);
    if (opened != ERROR_SUCCESS) return opened;
    const std::optional<LONGLONG> size = MustCopy() ? FileSize(m_fileName) : std::nullopt;
    const bool isWritten = Append(file, key.Get(), keyText, link);
    if (!MustCopy() || (isWritten && file.IsRead())) return ERROR_SUCCESS;
    // Part of an export would keep all of the file from being replayed.
    if (size.has_value()) CutFile(m_fileName, *size);
    if (isWritten) return ERROR_READ_FAULT;
    m_hasFailed = true;
    return ERROR_WRITE_FAULT;
}

/// @return whether all is listed and written.
bool CUndoRecord::Append(CRegFile& file, HKEY key, const std::string& keyText, ExportedLink link) {
    const std::vector<const Emptied*> emptiedThere = EmptiedIn(key);
    BeginList();
    NoteBranch(keyText);
    for (const Emptied* emptied : emptiedThere) NoteBranch(emptied->keyText);
    // What need not be listed is written all the same: by hand it can still be played back.
    if (!ListBranches() && MustCopy()) return false;
    (void)file.ExportKey(m_fileName.c_str(), keyText.c_str(), link);
    for (const Emptied* emptied : emptiedThere)
        file.AppendDefaultValue(m_fileName.c_str(), emptied->keyText.c_str(), emptied->type, emptied->data);
    // Without a companion the file would be replayed unread, so what merely kept it away for a moment must
    // not have the last word.
    return ListBranches() && file.IsWritten();
}

/// The emptied default values that an export of a branch holds. @param key  the branch's.
std::vector<const CUndoRecord::Emptied*> CUndoRecord::EmptiedIn(HKEY key) const {
    std::vector<const Emptied*> found;
    if (m_emptied.empty()) return found;
    const std::wstring branch = KeyObjectName(key);
    for (const Emptied& emptied : m_emptied)
        if (MayContain(branch, emptied.objectName)) found.push_back(&emptied);
    return found;
}

/// An undo file that is not there begins a list of its own.
void CUndoRecord::BeginList() {
    if (!IsMissing(m_fileName)) return;
    m_owesCompanion = true;
    m_noted.clear();
    m_unlisted.clear();
}

void CUndoRecord::NoteBranch(const std::string& keyText) {
    if (m_noted.insert(keyText).second) m_unlisted.push_back(keyText);
}

/// Lists the noted branches that are not listed yet. @return whether all of them are now.
bool CUndoRecord::ListBranches() {
    // One that is left over from another file must not let through more than this one's branches.
    if (m_owesCompanion && !MakeCompanion(m_fileName)) return false;
    m_owesCompanion = false;
    while (!m_unlisted.empty() && AddToCompanion(m_fileName, m_unlisted.front()))
        m_unlisted.erase(m_unlisted.begin());
    return m_unlisted.empty();
}

bool CUndoRecord::RememberDefault(HKEY key, const std::string& keyText) {
    const std::wstring objectName = KeyObjectName(key);
    for (const Emptied& emptied : m_emptied)
        if (!objectName.empty() && emptied.objectName == objectName) return true;  // the first time counts
    std::vector<unsigned char> data(kExportedDataBytes);
    auto size = static_cast<DWORD>(data.size());
    DWORD type = REG_NONE;
    const LSTATUS result = ::RegQueryValueExA(key, nullptr, nullptr, &type, data.data(), &size);
    // Without a default value there is nothing to come back; one that is too large is not in any export
    // either.
    const bool isTooLarge = result == ERROR_MORE_DATA && size > kExportedDataBytes;
    if (result != ERROR_SUCCESS) return result == ERROR_FILE_NOT_FOUND || isTooLarge;
    data.resize(size);
    m_emptied.push_back({objectName, keyText, type, std::move(data)});
    return true;
}
