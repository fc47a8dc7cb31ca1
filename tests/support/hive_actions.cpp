#include "tests/support/hive_actions.h"

#include "tests/support/native_calls.h"

namespace {

/// A key's name in the object tree in small letters.
std::string NameOf(HKEY key) {
    std::string name;
    for (const wchar_t c : ObjectName(key)) name += static_cast<char>(::towlower(c));
    return name;
}

LSTATUS Move(const std::string& from, const std::string& to) {
    return ::MoveFileA(from.c_str(), to.c_str()) != FALSE ? ERROR_SUCCESS
                                                          : static_cast<LSTATUS>(::GetLastError());
}

}  // namespace

LSTATUS CHiveActions::SaveHive(HKEY hive, const char* file) {
    if (beforeSave) beforeSave();
    saves.emplace_back(file);
    if (saves.size() == refusedSave) return saveAnswer;
    if (::GetFileAttributesA(file) != INVALID_FILE_ATTRIBUTES) return ERROR_ALREADY_EXISTS;
    return CSystemActions::SaveHive(hive, file);
}

LSTATUS CHiveActions::ReplaceHive(HKEY hive, const char* newFile, const char* oldFile) {
    if (beforeReplacement) beforeReplacement();
    replacements.push_back({NameOf(hive), newFile, oldFile});
    if (replacements.size() == refusedReplacement) return replaceAnswer;
    const std::string& file = hiveFiles[NameOf(hive)];
    const LSTATUS moved = Move(file, oldFile);
    return moved == ERROR_SUCCESS ? Move(newFile, file) : moved;
}

std::string CHiveActions::DeviceOfDrive(const char* drive) {
    return device ? *device : CSystemActions::DeviceOfDrive(drive);
}

bool CHiveActions::RestartSystem() {
    ++restarts;
    return true;
}
