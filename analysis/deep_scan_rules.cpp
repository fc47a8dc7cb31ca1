#include "analysis/deep_scan_rules.h"

#include <cstring>

namespace {

constexpr std::string_view kSkippedAnywhere = "Memory Management";
constexpr std::string_view kSkippedPaths[] = {
    R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee)",
    R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\{FEF2C100-2CA4-4A6A-A535-07B46117B323})",
};
constexpr std::string_view kSkippedValueName = "PagingFiles";
constexpr std::string_view kSkippedData = "svchost";

struct Prefix {
    const char* token;
    std::size_t dropped;  // characters, counted from the start of the data wherever the token stands
};
constexpr Prefix kPrefixes[] = {
    {",FileRenameShortToLong ", 23},
    {"[F00000000][", 31},
    {"file:///", 8},
    {"file://", 7},
    {R"(\??\)", 4},
    {"@", 1},
};

constexpr const char* kSystemRoot = "%SystemRoot%";
constexpr const char* kSystemDrive = "%SystemDrive%";
constexpr std::size_t kDriveLength = 2;  // a letter and a colon

struct Variable {
    const char* token;
    const char* onlyWithout;  // tried only when this occurs nowhere in the data; null: always
};
constexpr Variable kVariables[] = {
    {"%systemroot%", nullptr},  {"%SYSTEMROOT%", nullptr},
    {"%USERPROFILE%", nullptr}, {"%UserProfile%", "%USERPROFILE%"},
    {"%WinDir%", nullptr},      {"%WINDIR%", nullptr},
    {"%windir%", nullptr},      {"%ProgramFiles%", nullptr},
    {"%APPDATA%", nullptr},
};

bool StartsWith(std::span<const char> data, const char* token) {
    return std::strncmp(data.data(), token, std::strlen(token)) == 0;
}

bool Holds(std::span<const char> data, const char* token) {
    return std::strstr(data.data(), token) != nullptr;
}

void ReplaceStart(std::span<char> data, const char* token, std::string_view replacement) {
    const char* rest = data.data() + std::strlen(token);
    const std::size_t restBytes = std::strlen(rest) + 1;
    if (replacement.size() + restBytes > data.size()) return;
    std::memmove(data.data() + replacement.size(), rest, restBytes);
    std::memcpy(data.data(), replacement.data(), replacement.size());
}

}  // namespace

bool KeyIsSkipped(std::string_view path) {
    for (const std::string_view skipped : kSkippedPaths)
        if (path == skipped) return true;
    return path.find(kSkippedAnywhere) != std::string_view::npos;
}

bool ValueIsSkipped(std::string_view name, std::string_view data) {
    return name == kSkippedValueName || data.find(kSkippedData) != std::string_view::npos;
}

void DropPrefixes(char* data) {
    for (const Prefix& prefix : kPrefixes) {
        if (std::strstr(data, prefix.token) == nullptr) continue;
        const std::size_t length = std::strlen(data);
        const std::size_t dropped = prefix.dropped < length ? prefix.dropped : length;
        std::memmove(data, data + dropped, length - dropped + 1);
    }
}

void ReplaceFolderVariable(std::span<char> data, const CFolderSource& folders) {
    if (StartsWith(data, kSystemRoot)) {
        const std::string_view folder = folders.WindowsFolder();
        if (!folder.empty()) ReplaceStart(data, kSystemRoot, folder);
    } else if (StartsWith(data, kSystemDrive) && !Holds(data, kSystemRoot)) {
        const std::string_view folder = folders.WindowsFolder();
        if (!folder.empty()) ReplaceStart(data, kSystemDrive, folder.substr(0, kDriveLength));
    }
    for (const Variable& variable : kVariables) {
        if (!StartsWith(data, variable.token)) continue;
        if (variable.onlyWithout != nullptr && Holds(data, variable.onlyWithout)) continue;
        const std::string_view folder = folders.Expand(variable.token);
        if (!folder.empty()) ReplaceStart(data, variable.token, folder);
    }
}
