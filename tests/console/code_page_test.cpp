#include "console/code_page.h"

#include <doctest/doctest.h>
#include <windows.h>

namespace {

std::string AsEuro() {
    char text[8] = "";
    const wchar_t euro = 0x20AC;
    const int bytes = ::WideCharToMultiByte(CP_ACP, 0, &euro, 1, text, sizeof text, nullptr, nullptr);
    return {text, static_cast<std::size_t>(bytes)};
}

}  // namespace

TEST_CASE("text of the code page becomes UTF-8 and comes back") {
    CHECK(ToUtf8("") == "");
    CHECK(ToUtf8("plain \\ \"text\"") == "plain \\ \"text\"");
    REQUIRE(AsEuro() != "?");
    CHECK(ToUtf8(AsEuro()) == "\xE2\x82\xAC");
    CHECK(FromUtf8("\xE2\x82\xAC") == AsEuro());
    CHECK(FromUtf8("") == "");
}

TEST_CASE("every byte comes back as it was, alone and among others") {
    std::string every;
    for (int first = 1; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        CAPTURE(first);
        CHECK(FromUtf8(ToUtf8(one)) == one);
        every += one;
    }
    CHECK(FromUtf8(ToUtf8(every)) == every);
    const std::string backwards(every.rbegin(), every.rend());
    CHECK(FromUtf8(ToUtf8(backwards)) == backwards);
}

TEST_CASE("stand-in characters stand for bytes") {
    CHECK(FromUtf8("a\xEF\x9E\x81z") == "a\x81z");      // U+F781
    CHECK(FromUtf8("\xEF\x9F\xBF") == "\xFF");          // U+F7FF
    CHECK(FromUtf8("\xEF\x9E\x80") == "\x80");          // U+F780
    CHECK_FALSE(FromUtf8("\xEF\x9D\xBF").has_value());  // U+F77F, a private character like others
}

TEST_CASE("what the code page has no character for is refused, and so is what is no UTF-8") {
    CHECK_FALSE(FromUtf8("\xE4\xB8\xAD").has_value());  // a Chinese character
    CHECK_FALSE(FromUtf8("ok \xF0\x9F\x98\x80").has_value());
    CHECK_FALSE(FromUtf8("\xC0\x80").has_value());
    CHECK_FALSE(FromUtf8("a\x80").has_value());
    CHECK_FALSE(FromUtf8("\xED\xA0\x80").has_value());
}

TEST_CASE("UTF-16 becomes UTF-8 where it is whole") {
    using namespace std::string_view_literals;
    CHECK(Utf16ToUtf8("") == "");
    CHECK(Utf16ToUtf8("a\0\xAC\x20"sv) == "a\xE2\x82\xAC");
    CHECK_FALSE(Utf16ToUtf8("a\0b"sv).has_value());
    CHECK_FALSE(Utf16ToUtf8("\x00\xD8"sv).has_value());
}
