#pragma once

#include <string>

/// Whether a file is known not to be there.
[[nodiscard]] bool IsMissing(const std::string& fileName);

/// Makes the companion of an undo file that is new, or is about to be made. It lists nothing, and so keeps
/// the file from being replayed; what one that was left over listed is dropped, since it is of no use to
/// anybody.
/// @param undoFile  full path.
/// @return whether there is an empty companion now.
[[nodiscard]] bool MakeCompanion(const std::string& undoFile);

/// Lists a branch in an undo file's companion, which is made if need be.
/// @param undoFile  full path.
/// @param branch    the branch's key, root name first.
/// @return whether the branch is listed now.
[[nodiscard]] bool AddToCompanion(const std::string& undoFile, const std::string& branch);

/// Whether an undo file holds nothing but what exports of the branches in its companion write. A file without
/// a companion is not looked at.
[[nodiscard]] bool MayReplay(const std::string& undoFile);
