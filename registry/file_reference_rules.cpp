#include "registry/file_reference_rules.h"

#include <cstring>

namespace {

constexpr std::size_t kExtensionLength = 4;  // a dot and three letters

/// Moves `end` back over the blanks before it, not beyond `start`.
const char* TrimBlanks(const char* start, const char* end) {
    while (end > start && end[-1] == ' ') --end;
    return end;
}

struct PathRange {
    const char* start = nullptr;
    const char* end = nullptr;
};

/// Finds where the path stands in the text by quotes or delimiters; no range when it holds none.
PathRange FindPath(const char* text) {
    if (text[0] == '"') {
        const char* start = text + 1;
        const char* quote = std::strchr(start, '"');
        if (quote == nullptr) return {};
        return {start, TrimBlanks(start, quote)};
    }
    if (std::strchr(text, '*') != nullptr) return {};
    const char* delimiter = std::strpbrk(text, "<>/\",;");
    // Blanks are trimmed only before a delimiter; at the end of the text they belong to the path.
    if (delimiter != nullptr && delimiter > text) return {text, TrimBlanks(text, delimiter)};
    return {text, text + std::strlen(text)};
}

/// Puts a terminator behind the ".exe" of the first `lower` (else `upper`) in the text.
void CutBehind(char* text, const char* lower, const char* upper) {
    char* found = std::strstr(text, lower);
    if (found == nullptr) found = std::strstr(text, upper);
    if (found != nullptr) found[kExtensionLength] = '\0';
}

/// Cuts "C:\x\lib.dll\2", a file with a resource number behind it, to the file.
void CutBehindExtension(char* text) {
    char* dot = std::strrchr(text, '.');
    if (dot != nullptr && std::strlen(dot) > kExtensionLength && dot[kExtensionLength] == '\\')
        dot[kExtensionLength] = '\0';
}

}  // namespace

bool ExtractFilePath(char* text, std::span<char> path) {
    if (std::strlen(text) < 3) return false;
    PathRange range = FindPath(text);
    if (range.start == nullptr || range.end - range.start < 2) return false;
    if (range.start[1] != ':' || range.start[2] != '\\') return false;

    const char* second = std::strpbrk(range.start, "^/\",;[]");
    if (second != nullptr && second < range.end) range.end = TrimBlanks(range.start, second);
    const auto length = static_cast<std::size_t>(range.end - range.start);
    if (length >= path.size()) return false;

    // Deliberate: the cuts come after the length was measured, and they reach the whole text, so they shorten
    // the copy only where a terminator falls into it.
    CutBehind(text, ".exe -", ".EXE -");
    CutBehind(text, ".exe ", ".EXE ");
    CutBehindExtension(text);
    std::memcpy(path.data(), range.start, length);
    path[length] = '\0';
    return true;
}

std::string_view KeepUpToExe(std::string_view text, std::string_view behind) {
    const std::string lower = ".exe" + std::string(behind);
    const std::string upper = ".EXE" + std::string(behind);
    std::size_t found = text.find(lower);
    if (found == std::string_view::npos) found = text.find(upper);
    return found == std::string_view::npos ? text : text.substr(0, found + kExtensionLength);
}

bool HoldsExe(std::string_view text) {
    return text.find(".exe") != std::string_view::npos || text.find(".EXE") != std::string_view::npos;
}

bool HoldsSystemRoot(std::string_view text) {
    return text.find("%SystemRoot%") != std::string_view::npos ||
           text.find("%systemroot%") != std::string_view::npos;
}

std::string ReplaceEvery(std::string_view text, std::string_view token, std::string_view replacement) {
    std::string result;
    for (;;) {
        const std::size_t found = text.find(token);
        result.append(text.substr(0, found));
        if (found == std::string_view::npos) return result;
        result.append(replacement);
        text.remove_prefix(found + token.size());
    }
}

std::string_view Unquote(std::string_view text) {
    if (text.empty() || text.front() != '"') return text;
    const std::size_t last = text.rfind('"');
    return last == 0 ? std::string_view() : text.substr(1, last - 1);
}

std::string_view KeepUpToExtension(std::string_view text) {
    const std::size_t dot = text.rfind('.');
    return dot == std::string_view::npos ? text : text.substr(0, dot + kExtensionLength);
}

bool EndsInThreeLetterExtension(std::string_view text) {
    const std::size_t dot = text.rfind('.');
    return dot != std::string_view::npos && dot + kExtensionLength == text.size();
}

std::string SpellOutSystemFolder(std::string_view text) {
    struct Form {
        std::string_view start;
        std::string_view spelled;
    };
    constexpr Form kRelative[] = {{"system32", R"(%systemroot%\system32)"},
                                  {"System32", R"(%systemroot%\System32)"}};
    constexpr Form kRooted[] = {{R"(\SystemRoot)", "%systemroot%"}, {R"(\systemroot)", "%systemroot%"}};
    std::string spelled(text);
    for (const std::span<const Form> forms :
         {std::span<const Form>(kRelative), std::span<const Form>(kRooted)})
        for (const Form& form : forms)
            if (spelled.starts_with(form.start)) {
                spelled = ReplaceEvery(spelled, form.start, form.spelled);
                break;
            }
    return spelled;
}

std::string_view KeepFromDrive(std::string_view text) {
    const std::size_t colon = text.find(R"(:\)");
    return colon == std::string_view::npos || colon == 0 ? text : text.substr(colon - 1);
}

std::string_view DropSwitches(std::string_view text) {
    text = text.substr(0, text.find(" -"));
    return text.substr(0, text.find(" /"));
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

std::string BraceGuid(std::string_view guid) {
    if (guid.starts_with('{') || guid.ends_with('}')) return std::string(guid);
    return "{" + std::string(guid) + "}";
}

bool CountsAsMissing(MissingRule rule, std::int32_t open, std::int32_t query) {
    constexpr std::int32_t kSuccess = 0;
    constexpr std::int32_t kFileNotFound = 2;
    if (open != kSuccess) return rule == MissingRule::Strict || open == kFileNotFound;
    if (rule == MissingRule::LenientAllAccess) return query == kFileNotFound;
    return query != kSuccess;
}
