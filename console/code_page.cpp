#include "console/code_page.h"

#include <windows.h>

namespace {

constexpr wchar_t kFirstStandIn = 0xF780;
constexpr wchar_t kLastStandIn = 0xF7FF;
constexpr int kLongestCharacter = 4;  // bytes, of any code page

bool IsStandIn(wchar_t c) { return c >= kFirstStandIn && c <= kLastStandIn; }

std::optional<std::wstring> Decode(UINT codePage, std::string_view text) {
    const auto bytes = static_cast<int>(text.size());
    const int length = ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), bytes, nullptr, 0);
    if (length == 0) return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), bytes, wide.data(), length);
    return wide;
}

std::string Encode(UINT codePage, std::wstring_view wide) {
    const auto length = static_cast<int>(wide.size());
    const int bytes = ::WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), bytes, nullptr, nullptr);
    return text;
}

/// Decodes a text of the system code page where that loses nothing.
std::optional<std::wstring> DecodeWhole(std::string_view text) {
    const std::optional<std::wstring> wide = Decode(CP_ACP, text);
    if (!wide.has_value() || Encode(CP_ACP, *wide) != text) return std::nullopt;
    for (const wchar_t c : *wide)
        if (IsStandIn(c)) return std::nullopt;  // it would be read back as a byte
    return wide;
}

/// Decodes the first character of a text, or its first byte. @return how many bytes that are.
std::size_t DecodeFirst(std::string_view text, std::wstring& wide) {
    for (std::size_t bytes = 1; bytes <= kLongestCharacter && bytes <= text.size(); ++bytes)
        if (const std::optional<std::wstring> character = DecodeWhole(text.substr(0, bytes))) {
            wide += *character;
            return bytes;
        }
    wide += static_cast<wchar_t>(kFirstStandIn + (static_cast<unsigned char>(text.front()) & 0x7F));
    return 1;
}

}  // namespace

std::string ToUtf8(std::string_view text) {
    if (text.empty()) return {};
    if (const std::optional<std::wstring> wide = DecodeWhole(text)) return Encode(CP_UTF8, *wide);
    std::wstring wide;
    for (std::size_t at = 0; at < text.size();) at += DecodeFirst(text.substr(at), wide);
    return Encode(CP_UTF8, wide);
}

bool IsUtf8(std::string_view text) { return text.empty() || Decode(CP_UTF8, text).has_value(); }

std::optional<std::string> FromUtf8(std::string_view utf8) {
    if (utf8.empty()) return std::string();
    const std::optional<std::wstring> wide = Decode(CP_UTF8, utf8);
    if (!wide.has_value()) return std::nullopt;
    std::string text;
    std::size_t done = 0;
    for (std::size_t at = 0; at <= wide->size(); ++at) {
        if (at < wide->size() && !IsStandIn((*wide)[at])) continue;
        const std::wstring_view part = std::wstring_view(*wide).substr(done, at - done);
        if (!part.empty()) {
            const std::string bytes = Encode(CP_ACP, part);
            // A character that the code page lacks would become a similar one.
            if (Decode(CP_ACP, bytes) != part) return std::nullopt;
            text += bytes;
        }
        if (at < wide->size()) text += static_cast<char>(0x80 | ((*wide)[at] & 0x7F));
        done = at + 1;
    }
    return text;
}

std::optional<std::string> Utf16ToUtf8(std::string_view bytes) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::wstring wide;
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(bytes[at]) |
                                     static_cast<unsigned char>(bytes[at + 1]) << 8);
    std::string utf8 = Encode(CP_UTF8, wide);
    if (!wide.empty() && Decode(CP_UTF8, utf8) != wide) return std::nullopt;
    return utf8;
}
