// How long a path may be: it must fit with its terminator, measured before any argument is cut off.
#include <doctest/doctest.h>

#include "tests/rules/extraction.h"

namespace {

/// A path of exactly so many characters.
std::string PathOf(std::size_t length) { return R"(C:\)" + Letters(length - 3); }

}  // namespace

TEST_CASE("a path of 259 characters is found") {
    CHECK(PathIn(PathOf(258)) == PathOf(258));
    CHECK(PathIn(PathOf(259)) == PathOf(259));
    CHECK(PathIn('"' + PathOf(259) + "\" -x") == PathOf(259));
    CHECK(PathIn(PathOf(259) + ",b") == PathOf(259));
}

TEST_CASE("a path of 260 characters or more yields nothing") {
    for (const std::size_t length : {260U, 261U, 500U, 5000U}) {
        CAPTURE(length);
        CHECK(PathIn(PathOf(length)) == kNoPath);
        CHECK(PathIn('"' + PathOf(length) + '"') == kNoPath);
        CHECK(PathIn(PathOf(length) + ",b") == kNoPath);
    }
}

TEST_CASE("the room that counts is that of the buffer") {
    CHECK(PathIn(R"(C:\a)", 5) == R"(C:\a)");
    CHECK(PathIn(R"(C:\a)", 4) == kNoPath);
    CHECK(PathIn(R"(,:\x)", 1).empty());
}

TEST_CASE("the length counts after both cuts and the trimming of blanks before them") {
    CHECK(PathIn(PathOf(259) + Letters(40, ' ') + ",b") == PathOf(259));
    CHECK(PathIn('"' + PathOf(259) + Letters(40, ' ') + '"') == PathOf(259));
    CHECK(PathIn('"' + PathOf(200) + '^' + Letters(200) + '"') == PathOf(200));
    CHECK(PathIn(PathOf(200) + " [" + Letters(200)) == PathOf(200));
    CHECK(PathIn(PathOf(259) + " ") == kNoPath);
}

TEST_CASE("arguments behind a program count towards the length, although they are cut off later") {
    const std::string fits = R"(C:\app.exe -)" + Letters(247);
    REQUIRE(fits.size() == 259);
    CHECK(PathIn(fits) == R"(C:\app.exe)");
    CHECK(PathIn(fits + "a") == kNoPath);
    CHECK(PathIn(R"(C:\app.exe )" + Letters(249)) == kNoPath);
    CHECK(PathIn(R"(C:\x\lib.dll\)" + Letters(246, '1')) == R"(C:\x\lib.dll)");
    CHECK(PathIn(R"(C:\x\lib.dll\)" + Letters(247, '1')) == kNoPath);
}

TEST_CASE("a path that does not fit leaves the text and the buffer as they were") {
    const std::string text = R"(C:\app.exe -)" + Letters(248);
    const Extraction extraction = Extract(text);
    CHECK(extraction.text == text);
    CHECK(extraction.pathBytes == Letters(kPathBytes, kUntouched));
}

TEST_CASE("the path is written with its terminator and nothing behind it") {
    CHECK(Extract(R"(C:\a)", 8).pathBytes == std::string("C:\\a\0\xEE\xEE\xEE", 8));
    CHECK(Extract(R"("C:\a b " -x)", 8).pathBytes == std::string("C:\\a b\0\xEE", 8));
    CHECK(Extract(R"(,:\x)", 3).pathBytes == std::string("\0\xEE\xEE", 3));
    CHECK(Extract(PathOf(259)).pathBytes == PathOf(259) + '\0');
}
