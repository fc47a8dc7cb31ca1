// Has any text judged for a replay. What passes is looked at line by line, the way the registry editor does.
#include <algorithm>

#include "repair/export_check_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/fuzz/replay_lines.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::string_view kBranches = "HKEY_USERS\\a\r\nHKEY_CURRENT_USER\\Software\\c%0A\r\n";

std::string Same(std::string_view text) { return std::string(text); }

bool MayReplay(std::string_view text, std::size_t pieceBytes) {
    CBranchList branches(Same);
    (void)branches.Read(kBranches);
    CExportCheck check(branches);
    for (std::size_t at = 0; at < text.size(); at += pieceBytes) {
        const CExactBuffer piece = CExactBuffer::Unterminated(text.substr(at, pieceBytes));
        check.Feed(piece.View());
    }
    return check.Finish();
}

bool IsInBranch(std::string_view path) {
    return LiesIn("HKEY_USERS\\a", path) || LiesIn("HKEY_CURRENT_USER\\Software\\c\n", path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::size_t pieceBytes = std::size_t{1} + input.TakeByte() % 64;
    const std::uint8_t choice = input.TakeByte();
    std::string text(input.Rest());
    // What chance does not spell at the front of most texts.
    if (choice % 4 != 0) text = "Windows Registry Editor Version 5.00\r\n\r\n" + text;

    const bool mayReplay = MayReplay(text, std::max<std::size_t>(text.size(), 1));
    Require(MayReplay(text, pieceBytes) == mayReplay, "the pieces decide nothing");
    if (!mayReplay) return 0;
    Require(MayReplay(text.substr(0, text.size() - text.size() * choice / 255), pieceBytes),
            "a text that ends early is as good as the whole");
    RequireHarmlessLines(text, IsInBranch);
    return 0;
}
