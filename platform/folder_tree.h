#pragma once

#include <string>

/// Deletes everything in a folder: files, read-only ones included, and folders with all that is in them; of a
/// link to a folder only the link. The folder itself stays. What is in use stays; a folder that does not
/// exist is no error.
void DeleteFolderContents(const std::string& folder);
