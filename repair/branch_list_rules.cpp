#include "repair/branch_list_rules.h"

#include <cstddef>

namespace {

constexpr char kEscape = '%';
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kLineEnd = "\r\n";

bool IsPlain(char byte) { return byte >= ' ' && byte <= '~' && byte != kEscape; }

void AppendEscaped(std::string& text, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    text += kEscape;
    text += kHexDigits[value >> 4];
    text += kHexDigits[value & 0xF];
}

/// The byte that two digits stand for; nothing for other characters, or too few.
std::optional<char> ByteOf(std::string_view digits) {
    if (digits.size() < 2) return std::nullopt;
    const std::size_t high = kHexDigits.find(digits[0]);
    const std::size_t low = kHexDigits.find(digits[1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    return static_cast<char>(high << 4 | low);
}

/// Whether some key above a path, or the path itself, is there in a set.
template <class IsThere>
bool AnyAbove(std::string_view path, IsThere isThere) {
    for (std::size_t end = path.find('\\'); end != std::string_view::npos; end = path.find('\\', end + 1))
        if (isThere(path.substr(0, end))) return true;
    return isThere(path);
}

}  // namespace

std::string BranchLine(std::string_view branch) {
    std::string line;
    for (const char byte : branch) {
        if (IsPlain(byte)) {
            line += byte;
        } else {
            AppendEscaped(line, byte);
        }
    }
    return line.append(kLineEnd);
}

std::optional<std::string> BranchOfLine(std::string_view line) {
    if (line.empty()) return std::nullopt;
    std::string branch;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (IsPlain(line[at])) {
            branch += line[at];
            continue;
        }
        if (line[at] != kEscape) return std::nullopt;
        const std::optional<char> byte = ByteOf(line.substr(at + 1));
        // One form for each branch: what needs no escape has none.
        if (!byte.has_value() || IsPlain(*byte)) return std::nullopt;
        branch += *byte;
        at += 2;
    }
    return branch;
}

bool CBranchList::Read(std::string_view companionText) {
    for (std::size_t end = companionText.find(kLineEnd); end != std::string_view::npos;
         end = companionText.find(kLineEnd)) {
        const std::optional<std::string> branch = BranchOfLine(companionText.substr(0, end));
        if (!branch.has_value()) return false;
        m_folded.insert(m_fold(*branch));
        m_branches.insert(*branch);
        companionText.remove_prefix(end + kLineEnd.size());
    }
    return true;
}

bool CBranchList::Holds(std::string_view path) const {
    return AnyAbove(path, [this](std::string_view key) { return m_branches.contains(std::string(key)); }) ||
           AnyAbove(path, [this](std::string_view key) { return m_folded.contains(m_fold(key)); });
}
