#include "platform/folder_tree.h"

#include <windows.h>

#include "platform/owners.h"

namespace {

/// @return whether the system has deleted it.
bool DeleteEntry(const std::string& path, DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        ::SetFileAttributesA(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return ::DeleteFileA(path.c_str()) != FALSE;
    // What is behind a link belongs to somebody else.
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) DeleteFolderContents(path);
    return ::RemoveDirectoryA(path.c_str()) != FALSE;
}

/// Whether a folder is known to be one, and no link to another.
bool IsFolderItself(const std::string& folder) {
    const DWORD attributes = ::GetFileAttributesA(folder.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

}  // namespace

void DeleteFolderContents(const std::string& folder) {
    if (!IsFolderItself(folder)) return;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA((folder + "\\*.*").c_str(), &entry));
    if (!search) return;
    do {
        const std::string name = entry.cFileName;
        if (name == "." || name == "..") continue;
        (void)DeleteEntry(folder + "\\" + name, entry.dwFileAttributes);  // what is in use stays
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
}

bool DeleteFolderTree(const std::string& folder) {
    const DWORD attributes = ::GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
    return DeleteEntry(folder, attributes);
}
