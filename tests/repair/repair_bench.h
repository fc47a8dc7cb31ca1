#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "repair/undo_record.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

/// A root's handle by its long name.
[[nodiscard]] HKEY RootNamed(const std::string& name);
/// Whether a key is there, whether or not it opens.
[[nodiscard]] bool KeyExists(HKEY root, const std::string& path);
/// Makes a key, with all those above it that are missing.
void MakeKey(HKEY root, const std::string& path);
/// Sets a text value; the key is made if need be.
void SetValue(HKEY root, const std::string& path, const std::string& name, const std::string& text);
[[nodiscard]] bool ValueExists(HKEY root, const std::string& path, const std::string& name);

/// Deletes a key below a test's own one, with everything in it. @return the system's code.
[[nodiscard]] LSTATUS DeleteBelow(const CScratchKey& scratch, const std::string& name);
[[nodiscard]] bool ExistsBelow(const CScratchKey& scratch, const std::string& name);

/// Runs the system's registry editor, silently, over a file and waits until it has ended.
void ReplayByEditor(const std::string& file);

/// A key that some entry stands for, with what must go with it and what must not: it has values and a subkey,
/// and another key stands beside it. All of that is gone at the end.
class CPlantedUnit {
public:
    CPlantedUnit(const std::string& rootName, const std::string& path);
    CPlantedUnit(const CPlantedUnit&) = delete;
    CPlantedUnit& operator=(const CPlantedUnit&) = delete;
    ~CPlantedUnit();

    [[nodiscard]] std::string KeyText() const { return m_rootName + "\\" + m_path; }
    [[nodiscard]] bool Exists() const { return KeyExists(m_root, m_path); }
    /// Whether what stands around the unit is as it was planted.
    [[nodiscard]] bool SurroundingsAreWhole() const;

private:
    std::string m_rootName;
    HKEY m_root;
    std::string m_path;
    std::string m_topmost;  // of the keys that had to be made
};

/// An undo file in a folder of its own, and repairs that write into it.
class CRepairBench {
public:
    [[nodiscard]] bool Repair(const std::string& entryText) const;
    [[nodiscard]] std::string UndoFile() const { return m_folder.Path() + "\\undo.reg"; }
    [[nodiscard]] std::string UndoText() const;
    /// The first key line of each export in the undo file, without the brackets.
    [[nodiscard]] std::vector<std::string> Exports() const;

private:
    CScratchFolder m_folder;
    mutable CUndoRecord m_undo{UndoFile()};
};
