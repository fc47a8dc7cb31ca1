// Runs the rules for command lines, module names and GUIDs over any text.
#include <algorithm>

#include "registry/file_reference_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckKeepUpToExe(std::string_view text, std::string_view behind) {
    const std::string lower = ".exe" + std::string(behind);
    const std::string upper = ".EXE" + std::string(behind);
    const std::string_view kept = KeepUpToExe(text, behind);
    Require(text.starts_with(kept), "a command is cut only at its end");
    const bool holdsLower = text.find(lower) != std::string_view::npos;
    const bool holdsUpper = text.find(upper) != std::string_view::npos;
    if (!holdsLower && !holdsUpper) {
        Require(kept == text, "a command without a program stays");
        return;
    }
    Require(kept.ends_with(holdsLower ? ".exe" : ".EXE"), "a cut command ends in its extension");
    Require(text.substr(kept.size()).starts_with(behind), "what must follow the extension follows it");
    Require(CountOf(std::string(kept) + std::string(behind), holdsLower ? lower : upper) == 1,
            "the first extension counts");
    if (behind.empty()) Require(HoldsExe(text), "a program is told where one is cut");
}

void CheckReplaceEvery(std::string_view text, std::string_view token, std::string_view replacement) {
    if (token.empty()) return;  // no caller has an empty token, and there is no end to its occurrences
    const std::string replaced = ReplaceEvery(text, token, replacement);
    const std::size_t count = CountOf(text, token);
    Require(replaced.size() == text.size() - count * token.size() + count * replacement.size(),
            "each occurrence is replaced once");
    Require(ReplaceEvery(text, token, token) == text, "a variable replaced by itself changes nothing");
    Require(count > 0 || replaced == text, "a text without the variable stays");
    // A byte that the text does not have marks the places; putting the variable back there restores the text.
    if (text.find('\x01') == std::string_view::npos)
        Require(ReplaceEvery(ReplaceEvery(text, token, "\x01"), "\x01", token) == text,
                "nothing else changes");
}

void CheckUnquote(std::string_view text) {
    const std::string_view inside = Unquote(text);
    if (!text.starts_with('"')) {
        Require(inside == text, "an unquoted command stays");
    } else if (text.rfind('"') == 0) {
        Require(inside.empty(), "a single quote leaves nothing");
    } else {
        const std::string quoted = '"' + std::string(inside) + '"';
        Require(text.starts_with(quoted), "a quoted command is what its quotes hold");
        Require(text.substr(quoted.size()).find('"') == std::string_view::npos, "the last quote closes it");
    }
}

void CheckExtension(std::string_view text) {
    const std::string_view kept = KeepUpToExtension(text);
    Require(text.starts_with(kept), "a name is cut only at its end");
    Require(KeepUpToExtension(kept) == kept, "a name that was cut is not cut again");
    const std::size_t dot = text.rfind('.');
    if (dot == std::string_view::npos) {
        Require(kept == text, "a name without a dot stays");
    } else {
        Require(kept.rfind('.') == dot, "a name keeps its last dot");
        Require(kept == text || kept.size() == dot + 4, "a cut name keeps three letters");
        Require(text.size() <= dot + 4 || kept.size() < text.size(), "a longer extension is cut");
    }
    const bool threeLetters = text.size() >= 4 && dot == text.size() - 4;
    Require(EndsInThreeLetterExtension(text) == threeLetters, "three letters are told");
    Require(!threeLetters || kept == text, "a three-letter extension stays");
}

void CheckLowerCase(std::string_view text) {
    const std::string lower = LowerCase(text);
    Require(lower.size() == text.size(), "lower case keeps the length");
    Require(LowerCase(lower) == lower, "lower case is final");
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool upperLetter = text[i] >= 'A' && text[i] <= 'Z';
        Require(lower[i] == (upperLetter ? static_cast<char>(text[i] + 32) : text[i]), "only A to Z change");
    }
}

void CheckServiceImage(std::string_view text) {
    const std::string spelled = SpellOutSystemFolder(text);
    constexpr std::string_view kForms[] = {"system32", "System32", "\\SystemRoot", "\\systemroot"};
    const bool isShort =
        std::ranges::any_of(kForms, [text](std::string_view form) { return text.starts_with(form); });
    Require(isShort == (spelled != text), "what begins with a short form is spelled out, and nothing else");
    Require(!isShort || spelled.starts_with("%systemroot%"), "the Windows folder is put in front");

    const std::string_view drive = KeepFromDrive(text);
    Require(text.ends_with(drive), "only what stands before the drive goes");
    const std::size_t colon = text.find(":\\");
    if (colon == std::string_view::npos || colon == 0) {
        Require(drive == text, "a text without a drive stays");
    } else {
        Require(drive.find(":\\") == 1, "the first drive is at the front");
    }

    const std::string_view command = DropSwitches(text);
    Require(text.starts_with(command), "switches are cut from the end");
    Require(command.find(" /") == std::string_view::npos, "no switch is left");
    Require(command.find(" -") == std::string_view::npos, "nor one with a dash");
    Require(command == text || text.substr(command.size(), 1) == " ", "a blank stands before a switch");
}

void CheckMissing(std::int32_t open, std::int32_t query) {
    constexpr std::int32_t kNotFound = 2;
    Require(CountsAsMissing(MissingRule::Strict, open, query) == (open != 0 || query != 0),
            "any failure is an absence");
    Require(CountsAsMissing(MissingRule::Lenient, open, query) ==
                (open == kNotFound || (open == 0 && query != 0)),
            "a key that does not open is absent when it is not found");
    Require(CountsAsMissing(MissingRule::LenientAllAccess, open, query) ==
                (open == kNotFound || (open == 0 && query == kNotFound)),
            "and so is one that is not found once it is open");
}

void CheckBraces(std::string_view guid) {
    const bool hasBrace = !guid.empty() && (guid.front() == '{' || guid.back() == '}');
    const std::string wrapped = '{' + std::string(guid) + '}';
    Require(BraceGuid(guid) == (hasBrace ? guid : wrapped), "a GUID without a brace gets both");
    Require(BraceGuid(wrapped) == wrapped, "a GUID is wrapped once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const CExactBuffer token = CExactBuffer::Unterminated(input.TakeText());
    const CExactBuffer replacement = CExactBuffer::Unterminated(input.TakeText());
    const CExactBuffer text = CExactBuffer::Unterminated(input.Rest());

    CheckServiceImage(text.View());
    CheckMissing(static_cast<std::int32_t>(token.View().size()), static_cast<std::int32_t>(size % 4));
    CheckKeepUpToExe(text.View(), " ");
    CheckKeepUpToExe(text.View(), "");
    CheckReplaceEvery(text.View(), token.View(), replacement.View());
    CheckUnquote(text.View());
    CheckExtension(text.View());
    CheckLowerCase(text.View());
    CheckBraces(text.View());
    const bool holdsRoot = CountOf(text.View(), "%SystemRoot%") + CountOf(text.View(), "%systemroot%") > 0;
    Require(HoldsSystemRoot(text.View()) == holdsRoot, "the Windows folder's variable is told");
    return 0;
}
