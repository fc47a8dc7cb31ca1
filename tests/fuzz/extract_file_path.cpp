// Takes paths out of any text, and checks what an extraction may have written and changed.
#include "registry/file_reference_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::size_t kPathBytes = 260;

void CheckNothingFound(const CExactBuffer& text, std::string_view before, const CExactBuffer& path,
                       char fill) {
    Require(text.View() == before, "a text that holds no path is left as it was");
    Require(path.View() == Letters(kPathBytes, fill), "without a path nothing is written");
}

/// Bytes may become terminators, one for each of the three cuts; nothing else may change.
void CheckChanges(std::string_view before, std::string_view after) {
    std::size_t planted = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        Require(after[i] == '\0', "a changed byte is a terminator");
        Require(before[i] == ' ' || before[i] == '\\', "a terminator replaces a blank or a backslash");
        Require(i >= 4 && before[i - 4] == '.', "a terminator stands behind an extension");
        ++planted;
    }
    Require(planted <= 3, "no more than three terminators are planted");
}

void CheckPath(std::string_view path, std::string_view before, std::string_view after) {
    const bool quoted = before.front() == '"';
    const std::string_view start = after.substr(quoted ? 1 : 0);
    Require(path.size() < kPathBytes, "the path fits");
    Require(start.substr(0, path.size()) == path, "the path is where the changed text begins");
    Require(path.find_first_of("^/\",;[]") == std::string_view::npos, "no ending character is in the path");
    Require(quoted || before.find('*') == std::string_view::npos, "an unquoted text holds no asterisk");
    if (path.empty()) {
        Require(start.find_first_of("^/,;[]") == 0, "an empty path began with an ending character");
        return;
    }
    Require(path.size() >= 3 && path.substr(1, 2) == ":\\", "the path begins with a drive");
    if (!quoted && before.front() != '<' && before.front() != '>')
        Require(path.find_first_of("<>") == std::string_view::npos,
                "an unquoted path ends at an angle bracket");
}

/// @return what the extraction wrote, and whether there was anything.
bool ExtractOnce(std::string_view input, char fill, std::string& written) {
    CExactBuffer text = CExactBuffer::Terminated(input);
    CExactBuffer path = CExactBuffer::Sized("", kPathBytes, fill);
    const std::string before(text.View());
    const bool found = ExtractFilePath(text.Data(), path.Room());
    written = path.View();
    if (!found) {
        CheckNothingFound(text, before, path, fill);
        return false;
    }
    Require(path.View().find('\0') != std::string_view::npos, "the path is terminated");
    CheckChanges(before, text.View());
    CheckPath(path.Text(), std::string_view(before).substr(0, before.find('\0')), text.Text());
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input = CFuzzInput(bytes, size).Rest();
    std::string first;
    std::string second;
    const bool found = ExtractOnce(input, '\xEE', first);
    Require(ExtractOnce(input, '\x11', second) == found, "the buffer's old bytes decide nothing");
    if (!found) return 0;
    // What both runs wrote reads the same; behind it both buffers are as they were.
    const std::string_view path = std::string_view(first).substr(0, first.find('\0'));
    Require(std::string_view(second).substr(0, second.find('\0')) == path,
            "the buffer's old bytes are not read");
    std::size_t written = kPathBytes;
    while (written > 0 && first[written - 1] == '\xEE' && second[written - 1] == '\x11') --written;
    Require(first.compare(0, written, second, 0, written) == 0, "the path is written without a gap");
    Require(written > 0 && first[written - 1] == '\0', "the last byte written is the terminator");
    return 0;
}
