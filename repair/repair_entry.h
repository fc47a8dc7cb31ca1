#pragma once

#include <windows.h>

#include <string>
#include <unordered_map>

#include "repair/undo_record.h"

/// What a repair did, or would do.
struct Repair {
    enum class Deed { Nothing, ValueDeleted, KeyRemoved, DefaultEmptied };

    Deed deed = Deed::Nothing;
    std::string key;  // the removed key's path, with a leading backslash; it may stand above the entry's own
    bool isRefused = false;  // of a plan: the entry is there, and it would be left

    /// Whether a repair was made.
    explicit operator bool() const { return deed != Deed::Nothing; }
};

/// Repairs one entry, by the first kind of repair that it answers to; an entry of no kind loses its value,
/// or, where it is about a key, the data of its default value. What a repair changes is appended to the undo
/// file first; a repair goes ahead without it where the file cannot be written.
/// @param entryText  key path and value name as EntryText joins them.
[[nodiscard]] Repair RepairEntry(const std::string& entryText, CUndoRecord& undo);

/// Tells what RepairEntry would do, and changes nothing. A key's names are read once for all entries about
/// its values that come one after another.
class CRepairPlan {
public:
    /// Access that would have to be forced counts as granted.
    [[nodiscard]] Repair Of(const std::string& entryText);

private:
    [[nodiscard]] bool NameIsAmbiguous(HKEY key, const std::string& keyText, const std::string& valueName);

    std::string m_keyText;                         // of the key whose names are known
    bool m_isRead = false;                         // whether all of them are
    std::unordered_map<std::string, int> m_names;  // in small letters, with how many values have each
};

/// Plans one repair.
[[nodiscard]] inline Repair PlanRepair(const std::string& entryText) { return CRepairPlan().Of(entryText); }
