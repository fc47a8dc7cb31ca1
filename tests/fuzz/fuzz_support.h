#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// Ends the run when a claim about a rule's result does not hold; the fuzzer then keeps the input.
inline void Require(bool holds, const char* claim) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", claim);
    std::abort();
}

/// The fuzzer's bytes, taken from the front.
class CFuzzInput {
public:
    CFuzzInput(const std::uint8_t* bytes, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(bytes), size) {}

    std::uint8_t TakeByte() {
        if (m_rest.empty()) return 0;
        const auto byte = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }

    /// A text of at most so many characters, up to the next zero, which is taken as well.
    std::string TakeText(std::size_t most = std::string_view::npos) {
        const std::size_t end = m_rest.find('\0');
        std::string text(m_rest.substr(0, end));
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        if (text.size() > most) text.resize(most);
        return text;
    }

    /// Everything that is left.
    [[nodiscard]] std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

/// How often a token occurs, counting from the left without overlap.
inline std::size_t CountOf(std::string_view text, std::string_view token) {
    std::size_t count = 0;
    for (std::size_t at = text.find(token); at != std::string_view::npos;
         at = text.find(token, at + token.size()))
        ++count;
    return count;
}
