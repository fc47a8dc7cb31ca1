#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The ending of an undo file's name.
inline constexpr char kUndoFileEnding[] = ".reg";

/// The name, or the full path, of the companion of an undo file: the same with another ending. Empty
/// for any other file, which has none.
[[nodiscard]] std::string CompanionName(std::string_view undoFile);

/// Shows a name made of a time, with dots between its parts, as a date: the first three dots become '/', the
/// next two ':'; all else stays.
[[nodiscard]] std::string DottedTimeAsDate(std::string_view name);

/// Shows an undo file's name as a date: its first three dots become '/', the next two ':'.
/// @param name  local time in 24-hour form with ending, as in "2009.05.14.16.03.27.reg".
/// @return "2009/05/14/16:03:27"; nothing when no dot is left once the ending is cut.
[[nodiscard]] std::optional<std::string> ShownUndoDate(std::string_view name);
