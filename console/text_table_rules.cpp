#include "console/text_table_rules.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::string_view kGap = "  ";
constexpr std::string_view kOmission = "...";
constexpr std::size_t kLeastWidth = 4;  // of a column that is cut

bool BeginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

/// The bytes of a text's first characters.
std::size_t BytesOf(std::string_view text, std::size_t characters) {
    std::size_t at = 0;
    for (; at < text.size(); ++at)
        if (BeginsCharacter(text[at]) && characters-- == 0) break;
    return at;
}

void AppendHex(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    text.append("\\x") += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

/// The width to which columns are cut so that all fit: those that are narrower leave more to the others.
std::size_t CutWidth(std::vector<std::size_t> widths, std::size_t room) {
    std::ranges::sort(widths);
    for (std::size_t left = widths.size(); const std::size_t width : widths) {
        const std::size_t share = room / left--;
        if (width > share) return std::max(share, kLeastWidth);
        room -= width;
    }
    return kAnyWidth;
}

std::vector<std::size_t> ColumnWidths(const std::vector<std::vector<std::string>>& lines) {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& cells : lines) {
        widths.resize(std::max(widths.size(), cells.size()));
        for (std::size_t column = 0; column < cells.size(); ++column)
            widths[column] = std::max(widths[column], CountCharacters(cells[column]));
    }
    return widths;
}

}  // namespace

std::string Printable(std::string_view text) {
    std::string printable;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : '\0');
        if (byte < 0x20 || byte == 0x7F) {
            AppendHex(printable, byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // the second set of control characters
            AppendHex(printable, next);
            ++at;
        } else {
            printable += text[at];
        }
    }
    return printable;
}

std::size_t CountCharacters(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, BeginsCharacter));
}

std::string Shortened(std::string_view text, std::size_t limit) {
    const std::size_t count = CountCharacters(text);
    if (count <= limit) return std::string(text);
    if (limit <= kOmission.size()) return std::string(text.substr(0, BytesOf(text, limit)));
    const std::size_t kept = limit - kOmission.size();
    const std::size_t head = (kept + 1) / 2;
    std::string shortened(text.substr(0, BytesOf(text, head)));
    return shortened.append(kOmission).append(text.substr(BytesOf(text, count - (kept - head))));
}

std::string TextTable(const std::vector<std::vector<std::string>>& lines, std::size_t width) {
    const std::vector<std::size_t> widths = ColumnWidths(lines);
    if (widths.empty()) return {};
    const std::size_t gaps = kGap.size() * (widths.size() - 1);
    const std::size_t cut =
        width == kAnyWidth ? kAnyWidth : CutWidth(widths, width > gaps ? width - gaps : 0);
    std::string table;
    for (const std::vector<std::string>& cells : lines) {
        std::string line;
        std::size_t end = 0;  // where the next cell begins, in characters
        for (std::size_t column = 0; column < cells.size(); ++column) {
            line.append(end - CountCharacters(line), ' ').append(Shortened(cells[column], cut));
            end += std::min(widths[column], cut) + kGap.size();
        }
        table.append(line.substr(0, line.find_last_not_of(' ') + 1)) += '\n';
    }
    return table;
}
