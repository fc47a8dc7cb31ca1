#include "registry/file_reference.h"

#include <cstring>

#include "registry/file_reference_rules.h"

namespace {

constexpr UINT kWindowsFolderBytes = 100;
constexpr DWORD kExpansionBytes = 512;
constexpr DWORD kShortPathBytes = 260;
constexpr DWORD kVariableBytes = 260;
constexpr DWORD kFoundPathBytes = 255;

constexpr std::size_t kPathBytes = 260;

/// Two texts in a row with a terminator behind them. A path of usual length costs no allocation: the deep
/// scan asks for one path in every few values.
class CPathText {
public:
    explicit CPathText(std::string_view first, std::string_view second = {}) {
        if (first.size() + second.size() < sizeof m_buffer) {
            std::memcpy(m_buffer, first.data(), first.size());
            std::memcpy(m_buffer + first.size(), second.data(), second.size());
            m_buffer[first.size() + second.size()] = '\0';
        } else {
            m_long.append(first).append(second);
        }
    }
    [[nodiscard]] const char* Get() const { return m_long.empty() ? m_buffer : m_long.c_str(); }

private:
    char m_buffer[kPathBytes];
    std::string m_long;
};

bool PathExists(const CPathText& path) { return ::GetFileAttributesA(path.Get()) != INVALID_FILE_ATTRIBUTES; }

std::string ReplaceIfPresent(std::string text, std::string_view token, std::string (*replacement)()) {
    return text.find(token) == std::string::npos ? text : ReplaceEvery(text, token, replacement());
}

std::string TheWindowsFolder() { return WindowsFolder(); }

std::string ExpandedSystemRoot() {
    char text[kVariableBytes] = "";
    const DWORD length = ::ExpandEnvironmentStringsA("%SystemRoot%", text, sizeof text);
    return length == 0 || length > sizeof text ? std::string("%SystemRoot%") : std::string(text);
}

/// The text with its environment variables expanded, where that makes it longer and it still fits.
std::string TakeExpansion(std::string text) {
    char expanded[kExpansionBytes] = "";
    const DWORD bytes = ::ExpandEnvironmentStringsA(text.c_str(), expanded, sizeof expanded);
    if (bytes == 0 || bytes > sizeof expanded) return text;
    const std::string_view expansion(expanded);
    return expansion.size() > text.size() ? std::string(expansion) : text;
}

std::string TakeShortPath(std::string text) {
    char shortPath[kShortPathBytes] = "";
    const DWORD length = ::GetShortPathNameA(text.c_str(), shortPath, sizeof shortPath);
    return length >= 1 && length < sizeof shortPath ? std::string(shortPath) : text;
}

/// Searches a file in the folder that it names, or on the search path where it names none.
bool SearchFile(const std::string& text) {
    char found[kFoundPathBytes];
    char* filePart = nullptr;
    const std::size_t slash = text.rfind('\\');
    if (slash == std::string::npos)
        return ::SearchPathA(nullptr, text.c_str(), nullptr, sizeof found, found, &filePart) != 0;
    const std::string folder = text.substr(0, slash + 1);
    return ::SearchPathA(folder.c_str(), text.c_str() + slash + 1, nullptr, sizeof found, found, &filePart) !=
           0;
}

}  // namespace

std::string WindowsFolder(WindowsFolderQuery query) {
    char folder[kWindowsFolderBytes] = "";
    const UINT length = query(folder, sizeof folder);
    return length == 0 || length >= sizeof folder ? std::string() : std::string(folder);
}

bool FileReferenceIsMissing(std::string_view path, WindowsFolderQuery query) {
    if (PathExists(CPathText(path))) return false;
    const std::string_view program = KeepUpToExe(path, "");
    if (HoldsExe(path) && PathExists(CPathText(program))) return false;
    // Deliberate: a path with an unexpanded variable is tried again only when the Windows folder is not to be
    // had, and then stands behind an empty folder text. With the folder known it counts as missing.
    if (HoldsSystemRoot(path)) {
        char folder[kWindowsFolderBytes] = "";
        if (query(folder, sizeof folder) == 0 && PathExists(CPathText(folder, program))) return false;
    }
    return true;
}

bool CommandFileExists(std::string_view command) {
    if (command.empty()) return false;
    std::string text(KeepUpToExe(command, " "));
    text = ReplaceIfPresent(std::move(text), "%systemroot%", &TheWindowsFolder);
    text = ReplaceIfPresent(std::move(text), "%SystemRoot%", &ExpandedSystemRoot);
    text = ReplaceIfPresent(std::move(text), "%windir%", &TheWindowsFolder);
    text = TakeShortPath(TakeExpansion(std::string(Unquote(text))));
    return SearchFile(std::string(KeepUpToExtension(text)));
}

bool ModuleFileExists(std::string_view module) {
    if (module.empty()) return false;
    if (!EndsInThreeLetterExtension(module)) return true;
    std::string text = LowerCase(KeepUpToExe(module, " "));
    text = ReplaceIfPresent(std::move(text), "%systemroot%", &TheWindowsFolder);
    text = TakeExpansion(std::string(Unquote(text)));
    return SearchFile(std::string(KeepUpToExtension(text)));
}

bool SystemFileExists(std::string_view image) {
    if (image.empty()) return false;
    std::string text = SpellOutSystemFolder(KeepUpToExe(Unquote(image), " "));
    const char* token = text.find("%systemroot%") != std::string::npos ? "%systemroot%" : "%SystemRoot%";
    text = ReplaceIfPresent(std::move(text), token, &TheWindowsFolder);
    text = TakeShortPath(TakeExpansion(std::string(DropSwitches(KeepFromDrive(text)))));
    return SearchFile(std::string(KeepUpToExtension(text)));
}
