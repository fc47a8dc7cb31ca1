#include "tests/support/scratch_folder.h"

#include <windows.h>

#include <doctest/doctest.h>

#include "platform/owners.h"

namespace {

/// Starts a program of the host and waits until the system shows a folder entry, or no longer shows it.
void RunHostProgram(std::string commandLine, const std::string& entry, bool appears) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    REQUIRE(::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &start, &process) != FALSE);
    if (process.hThread != nullptr) ::CloseHandle(process.hThread);
    if (process.hProcess != nullptr) ::CloseHandle(process.hProcess);
    for (int round = 0; round < 500 && Exists(entry) != appears; ++round) ::Sleep(10);
}

std::string HostPath(const std::string& path) {
    using NameProc = char*(CDECL*)(const wchar_t*);
    static const auto convert = reinterpret_cast<NameProc>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    REQUIRE(static_cast<bool>(convert));
    char* host = convert(std::wstring(path.begin(), path.end()).c_str());
    REQUIRE(host != nullptr);
    const std::string text = host;
    ::HeapFree(::GetProcessHeap(), 0, host);
    return text;
}

void RemoveTree(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return;
    ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        ::DeleteFileA(path.c_str());
        return;
    }
    // Wine cannot remove a link to a folder.
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return RunHostProgram("Z:\\bin\\rm \"" + HostPath(path) + "\"", path, false);
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA((path + "\\*").c_str(), &entry));
    for (BOOL more = search ? TRUE : FALSE; more != FALSE; more = ::FindNextFileA(search.Get(), &entry)) {
        const std::string name = entry.cFileName;
        if (name != "." && name != "..") RemoveTree(path + "\\" + name);
    }
    ::RemoveDirectoryA(path.c_str());
}

}  // namespace

CScratchFolder::CScratchFolder() {
    static int count = 0;
    char temporary[MAX_PATH];
    REQUIRE(::GetTempPathA(sizeof temporary, temporary) != 0);
    m_path = temporary + ("VellumorTest-" + std::to_string(::GetCurrentProcessId())) + "-" +
             std::to_string(++count);
    REQUIRE(::CreateDirectoryA(m_path.c_str(), nullptr) != FALSE);
}

CScratchFolder::~CScratchFolder() { RemoveTree(m_path); }

std::string CScratchFolder::AddFile(const std::string& name) const {
    const std::string path = m_path + "\\" + name;
    const CUniqueFile file(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    REQUIRE(static_cast<bool>(file));
    return path;
}

std::string CScratchFolder::AddFolder(const std::string& name) const {
    const std::string path = m_path + "\\" + name;
    REQUIRE(::CreateDirectoryA(path.c_str(), nullptr) != FALSE);
    return path;
}

std::string CScratchFolder::AddFolderLink(const std::string& name, const std::string& target) const {
    const std::string path = m_path + "\\" + name;
    const std::size_t slash = path.rfind('\\');
    const std::string hostPath = HostPath(path.substr(0, slash)) + "/" + path.substr(slash + 1);
    RunHostProgram("Z:\\bin\\ln -s \"" + HostPath(target) + "\" \"" + hostPath + "\"", path, true);
    REQUIRE(Exists(path));
    return path;
}

bool Exists(const std::string& path) { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

CScratchVariable::CScratchVariable(const char* name, const std::optional<std::string>& value) : m_name(name) {
    char before[1024];
    const DWORD length = ::GetEnvironmentVariableA(name, before, sizeof before);
    REQUIRE(length < sizeof before);
    if (length != 0) m_before = std::string(before, length);
    ::SetEnvironmentVariableA(name, value ? value->c_str() : nullptr);
}

CScratchVariable::~CScratchVariable() {
    ::SetEnvironmentVariableA(m_name, m_before ? m_before->c_str() : nullptr);
}

std::string TheWindowsFolder() {
    char folder[MAX_PATH];
    REQUIRE(::GetWindowsDirectoryA(folder, sizeof folder) != 0);
    return folder;
}
