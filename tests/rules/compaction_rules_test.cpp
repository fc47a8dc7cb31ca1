#include "hives/compaction_rules.h"

#include <doctest/doctest.h>

TEST_CASE("a size is shown in bytes behind a blank, whatever it is") {
    CHECK(SizeText(0) == " 0");
    CHECK(SizeText(262'144) == " 262144");
    CHECK(SizeText(2'147'483'647) == " 2147483647");
    CHECK(SizeText(2'147'483'648) == " 2147483648");
    CHECK(SizeText(5'000'000'000) == " 5000000000");
    CHECK(SizeText(UINT64_MAX) == " 18446744073709551615");
}

TEST_CASE("the ratio is the part of the size that is gone, in percent with two decimals") {
    CHECK(RatioText(1000, 875) == " 12.50%");
    CHECK(RatioText(3, 2) == " 33.33%");
    CHECK(RatioText(3, 1) == " 66.67%");
    CHECK(RatioText(1000, 1000) == " 0.00%");
    CHECK(RatioText(1000, 0) == " 100.00%");
    CHECK(RatioText(6'000'000'000, 3'000'000'000) == " 50.00%");
}

TEST_CASE("a file that has grown has a negative ratio") {
    CHECK(RatioText(1000, 1250) == " -25.00%");
    CHECK(RatioText(1, UINT64_MAX).starts_with(" -1844674407370955"));
}

TEST_CASE("a file that was empty before has lost nothing") {
    CHECK(RatioText(0, 0) == " 0.00%");
    CHECK(RatioText(0, 4096) == " 0.00%");
}
