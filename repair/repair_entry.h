#pragma once

#include <string>

#include "repair/undo_record.h"

/// Repairs one entry, by the first kind of repair that it answers to; an entry of no kind loses its value,
/// or, where it is about a key, the data of its default value. What a repair changes is appended to the undo
/// file first; a repair goes ahead without it where the file cannot be written.
/// @param entryText  key path and value name as EntryText joins them.
/// @return whether a repair was made.
[[nodiscard]] bool RepairEntry(const std::string& entryText, CUndoRecord& undo);
