#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Text in a heap block with not one byte to spare: AddressSanitizer stops a rule that reads or writes past
/// it.
class CExactBuffer {
public:
    /// A block of the text and its terminator.
    static CExactBuffer Terminated(std::string_view text) {
        return CExactBuffer(text, text.size() + 1, '\0');
    }

    /// A block of the text alone, for rules that take a view: nothing behind the text may be looked at.
    static CExactBuffer Unterminated(std::string_view text) { return CExactBuffer(text, text.size(), '\0'); }

    /// A block of `size` bytes: the text, and `fill` in the rest.
    static CExactBuffer Sized(std::string_view text, std::size_t size, char fill = '\0') {
        return CExactBuffer(text, size, fill);
    }

    char* Data() { return m_bytes.data(); }
    std::span<char> Room() { return m_bytes; }
    [[nodiscard]] std::string_view View() const { return {m_bytes.data(), m_bytes.size()}; }

    /// The text up to its first zero, or the whole block where there is none.
    [[nodiscard]] std::string Text() const { return std::string(View().substr(0, View().find('\0'))); }

private:
    CExactBuffer(std::string_view text, std::size_t size, char fill) : m_bytes(size, fill) {
        std::copy_n(text.begin(), std::min(text.size(), size), m_bytes.begin());
    }

    std::vector<char> m_bytes;
};

/// `count` times the letter, for texts of a chosen length.
inline std::string Letters(std::size_t count, char letter = 'a') {
    std::string text;
    text.assign(count, letter);
    return text;
}
