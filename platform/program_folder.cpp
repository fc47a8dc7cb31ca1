#include "platform/program_folder.h"

#include <windows.h>

std::string ProgramFolder() {
    char path[MAX_PATH + 1] = "";
    const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string file(path, length < MAX_PATH ? length : MAX_PATH);
    return file.substr(0, file.rfind('\\'));
}
