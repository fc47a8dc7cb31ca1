// Runs the rules that are a few lines long over any text and any numbers.
#include <array>

#include "analysis/deep_scan_rules.h"
#include "analysis/history/user_assist_rules.h"
#include "app/help_rules.h"
#include "hives/compaction_rules.h"
#include "platform/command_line_rules.h"
#include "registry/key_path_rules.h"
#include "registry/letter_case_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

std::uint64_t TakeNumber(CFuzzInput& input) {
    std::uint64_t number = 0;
    for (int count = input.TakeByte() % 9; count > 0; --count) number = number << 8 | input.TakeByte();
    return number;
}

void CheckHelpFile(std::string_view folder) {
    const std::string file = HelpFileIn(folder);
    Require(file.starts_with(folder), "the help file is in the folder");
    const std::string_view name = std::string_view(file).substr(folder.size());
    Require(name.find('\\', 1) == std::string_view::npos, "it is not in one below");
    Require(name.starts_with('\\') == !folder.ends_with('\\'), "one backslash stands before its name");
}

void CheckUsageName(std::string_view stored) {
    const std::string name = DecodeUsageName(stored);
    Require(name.size() == stored.size(), "a name is as long in clear");
    Require(DecodeUsageName(name) == stored, "rotating by half of the alphabet twice changes nothing");
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char lower = LowerCase(stored[at]);
        const bool isLetter = lower >= 'a' && lower <= 'z';
        Require((name[at] != stored[at]) == isLetter, "letters change, and nothing else");
        Require((LowerCase(name[at]) == name[at]) == (lower == stored[at]), "letters keep their case");
        Require(LowerCase(UpperCase(stored[at])) == lower, "a letter has two cases");
    }
}

void CheckCommandLine(std::string_view line) {
    if (!NamesProgramInFull(line)) return;
    Require(line.size() > 5 && line.front() == '"' && line.substr(2, 2) == ":\\", "a drive is named");
    const std::size_t end = line.find('"', 1);
    Require(end != std::string_view::npos && line[end - 1] != '\\', "a file is named");
}

void CheckSkip(std::string_view path, std::string_view name) {
    const std::string longer = std::string(path) + "\\x";
    Require(!ValueIsSkipped(name, path) || ValueIsSkipped(name, longer), "longer data are left out, too");
    Require(!KeyIsSkipped(longer) || KeyIsSkipped(longer + "x"), "no key is left out by its last name's end");
}

void CheckNumbers(CFuzzInput& input) {
    const std::uint64_t before = TakeNumber(input);
    const std::uint64_t after = TakeNumber(input);
    Require(SizeText(before) == " " + std::to_string(before), "a size is its digits");
    const std::string ratio = RatioText(before, after);
    Require(ratio.starts_with(' ') && ratio.ends_with('%'), "a ratio is in percent");
    Require(ratio.find('.') == ratio.size() - 4, "it has two decimal places");
    Require((ratio.find('-') != std::string::npos) <= (after > before), "only what has grown is negative");
}

void CheckTime(CFuzzInput& input) {
    std::array<int, 6> parts{};
    for (int& part : parts) part = static_cast<int>(TakeNumber(input) & 0xFFFF);
    const std::string text = WriteTimeText({parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]});
    Require(text.size() >= 19, "a time has its six parts");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    CheckNumbers(input);
    CheckTime(input);
    const CExactBuffer name = CExactBuffer::Unterminated(input.TakeText());
    const CExactBuffer text = CExactBuffer::Unterminated(input.Rest());
    CheckHelpFile(text.View());
    CheckUsageName(text.View());
    CheckCommandLine(text.View());
    CheckSkip(text.View(), name.View());
    return 0;
}
