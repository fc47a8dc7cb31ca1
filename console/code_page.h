#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Turns a text of the system code page into UTF-8, so that FromUtf8 gives the same bytes back. A byte that
/// is no character of the code page becomes one of the private characters U+F780 to U+F7FF, 0x80 plus the
/// last seven bits of which is the byte.
[[nodiscard]] std::string ToUtf8(std::string_view text);

[[nodiscard]] bool IsUtf8(std::string_view text);

/// Turns UTF-8 into a text of the system code page. @return nothing for what is not valid UTF-8, and for a
/// character that the code page does not have.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

/// Turns UTF-16 of little-endian bytes into UTF-8. @return nothing for an odd number of bytes, and for what
/// is not valid UTF-16.
[[nodiscard]] std::optional<std::string> Utf16ToUtf8(std::string_view bytes);
