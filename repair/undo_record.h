#pragma once

#include <windows.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "repair/reg_file.h"

/// The undo file of one Clean command while it grows. Every export is a picture of its branch at that moment,
/// and a replay writes the pictures back in the order in which they were taken. What a repair deletes is
/// missing from later pictures and so comes back; but a default value that one repair has emptied is in them
/// as empty text, and would come back so. Therefore each picture of such a key is followed by the value as it
/// was before. The branches are listed in the undo file's companion, each before its first picture is taken.
class CUndoRecord {
public:
    /// @param fileName  full path of the undo file, which the first export makes.
    explicit CUndoRecord(std::string fileName) : m_fileName(std::move(fileName)) {}

    [[nodiscard]] const std::string& FileName() const { return m_fileName; }

    /// Appends a branch. @return as CRegFile::ExportKey.
    DWORD Export(const std::string& keyText, ExportedLink link);

    /// Call before a key's default value is emptied, when its export is written.
    /// @param key  open for reading values; borrowed.
    /// @return false when the value is there and could not be read: emptied, it would come back so.
    [[nodiscard]] bool RememberDefault(HKEY key, const std::string& keyText);

private:
    struct Emptied {
        std::wstring objectName;  // whichever name leads to the key; empty: not known
        std::string keyText;
        DWORD type;
        std::vector<unsigned char> data;
    };

    void ListBranch(const std::string& keyText);

    std::string m_fileName;
    std::unordered_set<std::string> m_listed;
    std::vector<Emptied> m_emptied;
};
