#include "platform/program_folder.h"

#include <windows.h>

std::string ProgramFolder() {
    char path[MAX_PATH + 1] = "";
    const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    // A path that was cut would name a folder further up.
    if (length == 0 || length >= MAX_PATH) return {};
    const std::string file(path, length);
    return file.substr(0, file.rfind('\\'));
}
