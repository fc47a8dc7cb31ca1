#pragma once

#include <string>

/// Deletes everything in a folder: files, read-only ones included, and folders with all that is in them; of a
/// link to a folder only the link. The folder itself stays. What is in use stays; a folder that does not
/// exist is no error, and one that is itself a link is left alone with what is behind it.
void DeleteFolderContents(const std::string& folder);

/// Deletes a folder with everything in it, or a link to a folder alone.
/// @return whether it is gone; what is in use stays, and the folders above it with it.
[[nodiscard]] bool DeleteFolderTree(const std::string& folder);
