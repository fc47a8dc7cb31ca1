// Makes any text printable and shorter, and tables of any cells.
#include "console/text_table_rules.h"

#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckPrintable(std::string_view text, std::string_view printable) {
    for (std::size_t at = 0; at < printable.size(); ++at) {
        const auto byte = static_cast<unsigned char>(printable[at]);
        Require(byte >= 0x20 && byte != 0x7F, "no control character is left");
        const auto next = static_cast<unsigned char>(at + 1 < printable.size() ? printable[at + 1] : 0);
        Require(byte != 0xC2 || next < 0x80 || next >= 0xA0, "none of the second set either");
    }
    Require(Printable(printable) == printable, "printable text stays");
    Require(printable.size() >= text.size(), "nothing is left out");
}

void CheckShortened(std::string_view text, std::size_t limit) {
    const std::string shortened = Shortened(text, limit);
    Require(CountCharacters(shortened) <= limit, "a text is no longer than the limit");
    if (CountCharacters(text) <= limit) {
        Require(shortened == text, "a short text stays");
        return;
    }
    Require(CountCharacters(shortened) == limit, "a long one is as long as the limit");
    Require(limit <= 3 || shortened.find("...") != std::string::npos, "and says that it was cut");
}

void CheckTable(const std::vector<std::vector<std::string>>& lines, std::size_t width) {
    const std::string table = TextTable(lines, width);
    Require(CountOf(table, "\n") == (lines.empty() ? 0 : lines.size()), "each line is one of the table");
    Require(table.find(" \n") == std::string::npos, "no blank ends a line");
    if (width != kAnyWidth) return;
    for (const std::vector<std::string>& cells : lines)
        for (const std::string& cell : cells) {
            const std::size_t end = cell.find_last_not_of(' ');
            Require(end == std::string::npos || table.find(cell.substr(0, end + 1)) != std::string::npos,
                    "each cell is in the table");
        }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::uint8_t limit = input.TakeByte();
    const std::size_t columns = std::size_t{1} + input.TakeByte() % 5;
    std::vector<std::vector<std::string>> lines;
    for (int count = input.TakeByte() % 4; count > 0; --count) {
        std::vector<std::string>& cells = lines.emplace_back();
        while (cells.size() < columns) cells.push_back(Printable(input.TakeText()));
    }
    const CExactBuffer text = CExactBuffer::Unterminated(input.Rest());
    CheckPrintable(text.View(), Printable(text.View()));
    CheckShortened(text.View(), limit);
    CheckTable(lines, limit % 2 == 0 ? kAnyWidth : limit);
    return 0;
}
