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
/// was before. The branches are listed in the undo file's companion, each before its first picture is taken;
/// one that could not be is listed as soon as that can be done.
class CUndoRecord {
public:
    /// What becomes of a repair whose export cannot be written, or its key not be read for it.
    enum class WithoutCopy { GoesAhead, IsRefused };

    /// @param fileName  full path of the undo file, which the first export makes.
    explicit CUndoRecord(std::string fileName, WithoutCopy withoutCopy = WithoutCopy::GoesAhead)
        : m_fileName(std::move(fileName)), m_withoutCopy(withoutCopy) {}

    [[nodiscard]] const std::string& FileName() const { return m_fileName; }

    /// Appends a branch.
    /// @return as CRegFile::ExportKey; where a repair must have its copy, ERROR_WRITE_FAULT or
    /// ERROR_READ_FAULT for one that could not be written, or listed, or read whole: the file is then as it
    /// was.
    DWORD Export(const std::string& keyText, ExportedLink link);

    /// Whether a repair is to be left when its export fails.
    [[nodiscard]] bool MustCopy() const { return m_withoutCopy == WithoutCopy::IsRefused; }
    /// Whether a copy that had to be written could not be, so that the next ones will hardly be, either.
    [[nodiscard]] bool HasFailed() const { return m_hasFailed; }

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

    [[nodiscard]] std::vector<const Emptied*> EmptiedIn(HKEY key) const;
    void BeginList();
    void NoteBranch(const std::string& keyText);
    [[nodiscard]] bool ListBranches();
    [[nodiscard]] bool Append(CRegFile& file, HKEY key, const std::string& keyText, ExportedLink link);

    std::string m_fileName;
    WithoutCopy m_withoutCopy;
    bool m_hasFailed = false;
    bool m_owesCompanion = false;             // to an undo file that was new; what there is may be another's
    std::unordered_set<std::string> m_noted;  // all branches
    std::vector<std::string> m_unlisted;      // those that the companion does not list yet
    std::vector<Emptied> m_emptied;
};
