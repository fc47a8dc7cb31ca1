#include "repair/undo_files.h"

#include <windows.h>

#include "platform/host_services.h"
#include "platform/local_time.h"
#include "platform/owners.h"
#include "platform/program_folder.h"
#include "repair/undo_companion.h"
#include "repair/undo_name_rules.h"

namespace {

/// The full path of an undo file that is there; empty where our own folder is not known: in the root of the
/// drive, anybody's may lie.
std::string UndoFilePath(const std::string& name) {
    const std::string folder = ProgramFolder();
    return folder.empty() ? folder : folder + "\\Undo\\" + name;
}

/// The full path of the system's registry editor; empty where it is not known.
std::string RegistryEditor() {
    char folder[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(folder, sizeof folder);
    if (length == 0 || length >= sizeof folder) return {};
    return std::string(folder, length) + "\\regedit.exe";
}

bool FileExists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Names a new undo file by the local time and makes its folder.
std::string MakeNameIn(const std::string& folder) {
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder + "\\" + LocalTimeName() + kUndoFileEnding;
}

bool DeleteWithCompanion(const std::string& file) {
    if (::DeleteFileA(file.c_str()) == FALSE) return false;
    // After the file: without its companion, it would be replayed unread.
    const std::string companion = CompanionName(file);
    if (!companion.empty()) ::DeleteFileA(companion.c_str());
    return true;
}

}  // namespace

std::string UndoFolder() { return ProgramFolder() + "\\Undo"; }

std::string MakeUndoFileName() { return MakeNameIn(UndoFolder()); }

std::optional<std::string> ClaimUndoFile() {
    constexpr int kTries = 40;         // more than two names' time
    constexpr DWORD kTryPeriod = 100;  // milliseconds
    const std::string programFolder = ProgramFolder();
    if (programFolder.empty()) return std::nullopt;
    for (int left = kTries; left > 0; --left) {
        const std::string fileName = MakeNameIn(programFolder + "\\Undo");
        CUniqueFile file(::CreateFileA(fileName.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file) {
            if (MakeCompanion(fileName)) return fileName;
            file.Reset();
            ::DeleteFileA(fileName.c_str());
            return std::nullopt;
        }
        if (::GetLastError() != ERROR_FILE_EXISTS) return std::nullopt;
        ::Sleep(kTryPeriod);
    }
    return std::nullopt;
}

bool DropEmptyUndoFile(const std::string& fileName) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (::GetFileAttributesExA(fileName.c_str(), GetFileExInfoStandard, &data) == FALSE)
        return ::GetLastError() == ERROR_FILE_NOT_FOUND;
    return data.nFileSizeHigh == 0 && data.nFileSizeLow == 0 && DeleteWithCompanion(fileName);
}

std::vector<std::string> FindUndoFiles() {
    std::vector<std::string> names;
    const std::string pattern = UndoFilePath("*.reg");
    if (pattern.empty()) return names;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA(pattern.c_str(), &entry));
    if (!search) return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
    return names;
}

bool DeleteUndoFile(const std::string& name) { return DeleteWithCompanion(UndoFilePath(name)); }

bool ReplayUndoFile(const std::string& name) {
    const std::string editor = RegistryEditor();
    const std::string file = UndoFilePath(name);
    if (editor.empty() || !FileExists(editor)) return false;
    if (file.empty() || !MayReplay(file)) return false;
    const std::string command = "\"" + editor + "\" /s \"" + file + "\"";
    constexpr UINT kLastError = 31;
    return SystemActions().RunProgram(command.c_str(), SW_HIDE) > kLastError;
}
