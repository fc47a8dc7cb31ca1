#pragma once

#include <optional>
#include <string>
#include <vector>

/// The folder of the undo files, beside the program, without a trailing backslash. Where the program's own
/// folder is not known, it is one in the root of the drive: better a copy there than none.
[[nodiscard]] std::string UndoFolder();

/// Names a new undo file by the local time and makes its folder; the file itself is made by the first export.
/// @return the full path, as in "D:\Tools\Undo\2009.05.14.16.03.27.reg".
[[nodiscard]] std::string MakeUndoFileName();

/// Makes an undo file of its own, empty, for a command that changes nothing without one, and its companion,
/// by which no byte of it can be replayed unread. Names are a second apart; one that is taken is waited out.
/// @return the full path; nothing where either cannot be made and written.
[[nodiscard]] std::optional<std::string> ClaimUndoFile();

/// Deletes an undo file that was claimed, if nothing has been written into it. @return whether it is gone.
[[nodiscard]] bool DropEmptyUndoFile(const std::string& fileName);

/// The names of the undo files that are there, without folder, in the order of the file search.
[[nodiscard]] std::vector<std::string> FindUndoFiles();

/// Deletes an undo file and its companion. @param name  without folder. @return whether the file is gone.
[[nodiscard]] bool DeleteUndoFile(const std::string& name);

/// Starts the system's registry editor, hidden, to write back what an undo file holds. Its end is not waited
/// for, and the file is kept. Nothing is started when the file holds something else than the branches that
/// its companion lists.
/// @param name  without folder.
/// @return whether the editor has been started.
[[nodiscard]] bool ReplayUndoFile(const std::string& name);
