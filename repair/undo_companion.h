#pragma once

#include <string>

/// Lists a branch in an undo file's companion, which is made if need be. A companion without its undo file is
/// of no use to anybody; what it lists is dropped.
/// @param undoFile  full path; the file need not be there yet.
/// @param branch    the branch's key, root name first.
/// @return whether the branch is listed now.
[[nodiscard]] bool AddToCompanion(const std::string& undoFile, const std::string& branch);

/// Whether an undo file holds nothing but what exports of the branches in its companion write. A file without
/// a companion is not looked at.
[[nodiscard]] bool MayReplay(const std::string& undoFile);
