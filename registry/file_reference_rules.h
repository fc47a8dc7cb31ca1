#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Takes an absolute drive path out of registry text: unquotes it, cuts it at the characters that end a path,
/// and keeps only what begins with a drive, a colon and a backslash.
/// @param text  zero-terminated; it is changed in place: cut behind an ".exe" with arguments, and behind a
///              three-letter extension that is followed by a backslash.
/// @param path  receives the zero-terminated path; untouched when there is none. Callers give 260 bytes.
/// @return whether the text holds such a path and it fits.
[[nodiscard]] bool ExtractFilePath(char* text, std::span<char> path);

/// The text up to and including the first ".exe" (else ".EXE") that `behind` follows; the text itself where
/// there is none.
[[nodiscard]] std::string_view KeepUpToExe(std::string_view text, std::string_view behind);

/// Whether the text holds ".exe" or ".EXE".
[[nodiscard]] bool HoldsExe(std::string_view text);

/// Whether the text holds the variable of the Windows folder, "%SystemRoot%" or "%systemroot%".
[[nodiscard]] bool HoldsSystemRoot(std::string_view text);

/// The text with every occurrence of `token` replaced; what was put in is not searched again.
/// @param token  not empty.
[[nodiscard]] std::string ReplaceEvery(std::string_view text, std::string_view token,
                                       std::string_view replacement);

/// What stands between an opening quote and the last one; nothing when the opening quote is the only one, and
/// the text itself when it begins with no quote.
[[nodiscard]] std::string_view Unquote(std::string_view text);

/// The text cut behind the three-letter extension of its last dot; unchanged without a dot.
[[nodiscard]] std::string_view KeepUpToExtension(std::string_view text);

/// Whether the text's last dot stands exactly four characters before its end.
[[nodiscard]] bool EndsInThreeLetterExtension(std::string_view text);

/// The short forms that service images begin with, "system32" and "\SystemRoot", written with "%systemroot%";
/// the letters' case counts, and a form that stands at the start is replaced wherever it stands.
[[nodiscard]] std::string SpellOutSystemFolder(std::string_view text);

/// The text from the drive letter of its first ":\" on.
[[nodiscard]] std::string_view KeepFromDrive(std::string_view text);

/// The text cut before its first " -", and then before its first " /".
[[nodiscard]] std::string_view DropSwitches(std::string_view text);

/// ASCII letters in lower case; other bytes as they are, since a code page's letters are not ours to know.
[[nodiscard]] std::string LowerCase(std::string_view text);

/// A GUID text wrapped in braces, unless it begins or ends with one.
[[nodiscard]] std::string BraceGuid(std::string_view guid);

/// How strictly a class key's absence is judged.
enum class MissingRule {
    Strict,            // an empty name is never missing; any failure to open is
    Lenient,           // only "not found" is missing
    LenientAllAccess,  // the same, opened for all access; a failing query counts only when it says "not
                       // found"
};

/// Whether the answers of opening a class key, and then of querying it, count as missing.
/// @param open   the system's code of the open.
/// @param query  the system's code of the query; looked at only where the key was opened.
[[nodiscard]] bool CountsAsMissing(MissingRule rule, std::int32_t open, std::int32_t query);
