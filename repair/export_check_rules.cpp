#include "repair/export_check_rules.h"

#include <algorithm>

namespace {

constexpr std::string_view kHeaderText[] = {"Windows Registry Editor Version 5.00", ""};
constexpr std::string_view kHexLineEnd = ",\\";
constexpr std::size_t kNumberDigits = 8;
// More than the longest path, and than the longest text with all its escapes.
constexpr std::size_t kLongestLine = std::size_t{256} * 1024;

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); }

/// What readers of the format skip at the start of a line, and some more.
std::string_view WithoutBlanks(std::string_view line) {
    constexpr char kHardBlank = '\xA0';
    while (!line.empty() && (static_cast<unsigned char>(line.front()) <= ' ' || line.front() == kHardBlank))
        line.remove_prefix(1);
    return line;
}

/// Whether a line of a quoted text, taken by itself, looks like a key line or a default value.
bool LooksLikeOrder(std::string_view line) {
    line = WithoutBlanks(line);
    if (!line.starts_with('@')) return line.starts_with('[');
    return WithoutBlanks(line.substr(1)).starts_with('=');
}

/// Takes the type's number off. Text and binary data have other forms.
bool TakeHexType(CLineRest& rest) {
    const std::string_view digits = rest.Text().substr(0, rest.Text().find(')'));
    if (digits.size() > kNumberDigits || !std::ranges::all_of(digits, IsHexDigit)) return false;
    if (digits.size() > 1 && digits.front() == '0') return false;
    const bool isCutHere = rest.IsCut() && rest.Text() == digits;
    const bool hasOwnForm = digits.empty() || digits == "1" || digits == "2" || digits == "3";
    return (isCutHere || !hasOwnForm) && rest.Take(digits);
}

}  // namespace

bool CLineRest::Take(std::string_view opening) {
    if (!m_text.starts_with(opening)) {
        if (!m_isCut || !opening.starts_with(m_text)) return false;
        opening = m_text;
    }
    m_text.remove_prefix(opening.size());
    return true;
}

bool CLineRest::TakeHexDigits(std::size_t count) {
    for (; count > 0 && !m_text.empty() && IsHexDigit(m_text.front()); --count) m_text.remove_prefix(1);
    return count == 0 || (m_isCut && m_text.empty());
}

bool CLineRest::TakeQuoted(bool& isClosed) {
    isClosed = false;
    while (!m_text.empty() && !isClosed) {
        isClosed = m_text.front() == '"';
        if (m_text.front() == '\\') {
            m_text.remove_prefix(1);
            if (m_text.empty()) return m_isCut;
            if (m_text.front() != '"' && m_text.front() != '\\') return false;
        }
        m_text.remove_prefix(1);
    }
    return true;
}

void CExportCheck::Feed(std::string_view piece) {
    for (const char byte : piece) {
        if (!m_isTrue) return;
        TakeByte(byte);
    }
}

bool CExportCheck::Finish() {
    if (m_isTrue && (m_afterReturn || !m_line.empty())) EndLine(Ending::None);
    return m_isTrue;
}

void CExportCheck::TakeByte(char byte) {
    const bool afterReturn = m_afterReturn;
    m_afterReturn = byte == '\r';
    if (byte == '\n') {
        // An export puts a carriage return before every line feed.
        m_isTrue = afterReturn;
        if (m_isTrue) EndLine(Ending::LineFeed);
        return;
    }
    if (afterReturn) EndLine(Ending::CarriageReturn);
    if (byte == '\r' || !m_isTrue) return;
    m_line += byte;
    m_isTrue = byte != '\0' && m_line.size() <= kLongestLine;
}

void CExportCheck::EndLine(Ending ending) {
    m_isTrue = LineIsTrue({m_line, ending == Ending::None});
    const bool goesOn = m_inside == Inside::Name || m_inside == Inside::Data;
    if (ending == Ending::CarriageReturn && !goesOn) m_isTrue = false;
    m_line.clear();
}

bool CExportCheck::LineIsTrue(CLineRest line) {
    switch (m_inside) {
        case Inside::Nothing:
            return FreshLineIsTrue(line);
        case Inside::Hex:
            return line.Take("  ") && HexIsTrue(line);
        case Inside::Name:
            // Taken by itself, a line with the closing quote in front is a value of another name.
            if (LooksLikeOrder(line.Text()) || WithoutBlanks(line.Text()).starts_with('"')) return false;
            return NameIsTrue(line);
        case Inside::Data:
            return !LooksLikeOrder(line.Text()) && TextIsTrue(line);
    }
    return false;
}

bool CExportCheck::FreshLineIsTrue(CLineRest line) {
    if (m_headerLines < std::ssize(kHeaderText)) {
        const std::string_view expected = kHeaderText[m_headerLines++];
        return line.Take(expected) && line.Text().empty();
    }
    if (line.Text().empty()) {
        m_inBlock = false;
        return true;
    }
    if (line.Text().starts_with('[')) return KeyLineIsTrue(line.Text(), line.IsCut());
    if (!m_inBlock) return false;
    if (line.Text().starts_with('@')) return line.Take("@=") && DataAreTrue(line);
    return line.Take("\"") && NameIsTrue(line);
}

bool CExportCheck::KeyLineIsTrue(std::string_view line, bool isCut) {
    const std::size_t end = line.rfind(']');
    if (end == std::string_view::npos) return isCut;
    // A blank line stands before every key line; text behind the bracket is the rest of a name.
    if (m_inBlock || (!isCut && end + 1 != line.size())) return false;
    m_inBlock = true;
    return m_branches.Holds(line.substr(1, end - 1));
}

bool CExportCheck::NameIsTrue(CLineRest rest) {
    bool isClosed = false;
    if (!rest.TakeQuoted(isClosed)) return false;
    m_inside = isClosed ? Inside::Nothing : Inside::Name;
    return !isClosed || (rest.Take("=") && DataAreTrue(rest));
}

bool CExportCheck::DataAreTrue(CLineRest rest) {
    if (rest.Take("\"")) return TextIsTrue(rest);
    if (rest.Take("dword:")) return rest.TakeHexDigits(kNumberDigits) && rest.Text().empty();
    if (rest.Take("hex:")) return rest.Text().empty() || HexIsTrue(rest);
    if (!rest.Take("hex(") || !TakeHexType(rest) || !rest.Take("):")) return false;
    return rest.Text().empty() || HexIsTrue(rest);
}

bool CExportCheck::TextIsTrue(CLineRest rest) {
    bool isClosed = false;
    if (!rest.TakeQuoted(isClosed)) return false;
    m_inside = isClosed ? Inside::Nothing : Inside::Data;
    return rest.Text().empty();
}

bool CExportCheck::HexIsTrue(CLineRest rest) {
    m_inside = Inside::Nothing;
    while (rest.TakeHexDigits(2)) {
        if (rest.Text().empty()) return true;
        if (rest.Text() == kHexLineEnd) {
            m_inside = Inside::Hex;
            return true;
        }
        if (!rest.Take(",")) return false;
    }
    return false;
}
