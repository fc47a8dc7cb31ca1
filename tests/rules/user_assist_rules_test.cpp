// Names of the usage counters.
#include "analysis/history/user_assist_rules.h"

#include <doctest/doctest.h>

#include <string>

#include "tests/rules/exact_buffer.h"

TEST_CASE("the 52 letters are moved by 13 places, their case kept") {
    CHECK(DecodeUsageName("abcdefghijklmnopqrstuvwxyz") == "nopqrstuvwxyzabcdefghijklm");
    CHECK(DecodeUsageName("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == "NOPQRSTUVWXYZABCDEFGHIJKLM");
}

TEST_CASE("every other byte of a usage name stays") {
    for (int byte = 0; byte < 256; ++byte) {
        const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        if (isLetter) continue;
        CAPTURE(byte);
        const std::string name = {'a', static_cast<char>(byte), 'N'};
        CHECK(DecodeUsageName(name) == std::string{'n', static_cast<char>(byte), 'A'});
    }
}

TEST_CASE("a usage name is read to its end and no further") {
    CHECK(DecodeUsageName("").empty());
    CHECK(DecodeUsageName(CExactBuffer::Unterminated("HRZR_EHACNGU:P:\\k1.rkr").View()) ==
          "UEME_RUNPATH:C:\\x1.exe");
}
