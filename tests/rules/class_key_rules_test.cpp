// How the key of a class, a type library or an application is named, and when it counts as missing.
#include <doctest/doctest.h>

#include "registry/file_reference_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::int32_t kOk = 0;
constexpr std::int32_t kNotFound = 2;
constexpr std::int32_t kDenied = 5;

std::string Brace(std::string_view guid) {
    const CExactBuffer block = CExactBuffer::Unterminated(guid);
    return BraceGuid(block.View());
}

struct Row {
    std::int32_t open;
    std::int32_t query;
    bool missing;
};

template <std::size_t size>
void CheckRows(MissingRule rule, const Row (&rows)[size]) {
    for (const Row& row : rows) {
        CAPTURE(row.open);
        CAPTURE(row.query);
        CHECK(CountsAsMissing(rule, row.open, row.query) == row.missing);
    }
}

}  // namespace

TEST_CASE("a GUID without braces names the same key as one with both") {
    CHECK(Brace("00000000-0000-0000-0000-000000000000") == "{00000000-0000-0000-0000-000000000000}");
    CHECK(Brace("{00000000-0000-0000-0000-000000000000}") == "{00000000-0000-0000-0000-000000000000}");
}

TEST_CASE("a GUID with one brace is looked up as it stands") {
    CHECK(Brace("{0000") == "{0000");
    CHECK(Brace("0000}") == "0000}");
    CHECK(Brace("{") == "{");
    CHECK(Brace("}") == "}");
}

TEST_CASE("braces inside a text do not keep it from being wrapped") {
    CHECK(Brace("0{0}0") == "{0{0}0}");
    CHECK(Brace(" {0000} ") == "{ {0000} }");
    CHECK(Brace("}0{") == "{}0{}");
    CHECK(Brace("(0000)") == "{(0000)}");
    CHECK(Brace("x") == "{x}");
    CHECK(Brace("") == "{}");
}

TEST_CASE("strictly judged, a key that cannot be opened or queried is missing") {
    constexpr Row kRows[] = {
        {kOk, kOk, false},      {kOk, kNotFound, true},       {kOk, kDenied, true},
        {kNotFound, kOk, true}, {kNotFound, kNotFound, true}, {kNotFound, kDenied, true},
        {kDenied, kOk, true},   {kDenied, kNotFound, true},   {kDenied, kDenied, true},
    };
    CheckRows(MissingRule::Strict, kRows);
}

TEST_CASE("leniently judged, a key is missing when it is not found or an opened one cannot be queried") {
    constexpr Row kRows[] = {
        {kOk, kOk, false},      {kOk, kNotFound, true},       {kOk, kDenied, true},
        {kNotFound, kOk, true}, {kNotFound, kNotFound, true}, {kNotFound, kDenied, true},
        {kDenied, kOk, false},  {kDenied, kNotFound, false},  {kDenied, kDenied, false},
    };
    CheckRows(MissingRule::Lenient, kRows);
}

TEST_CASE("opened for all access, a key is missing only when the open or the query says not found") {
    constexpr Row kRows[] = {
        {kOk, kOk, false},      {kOk, kNotFound, true},       {kOk, kDenied, false},
        {kNotFound, kOk, true}, {kNotFound, kNotFound, true}, {kNotFound, kDenied, true},
        {kDenied, kOk, false},  {kDenied, kNotFound, false},  {kDenied, kDenied, false},
    };
    CheckRows(MissingRule::LenientAllAccess, kRows);
}

TEST_CASE("a deleted key's answer is judged like any other failure") {
    constexpr std::int32_t kKeyDeleted = 1018;
    CHECK(CountsAsMissing(MissingRule::Strict, kKeyDeleted, kOk));
    CHECK_FALSE(CountsAsMissing(MissingRule::Lenient, kKeyDeleted, kOk));
    CHECK_FALSE(CountsAsMissing(MissingRule::LenientAllAccess, kKeyDeleted, kOk));
    CHECK(CountsAsMissing(MissingRule::Strict, kOk, kKeyDeleted));
    CHECK(CountsAsMissing(MissingRule::Lenient, kOk, kKeyDeleted));
    CHECK_FALSE(CountsAsMissing(MissingRule::LenientAllAccess, kOk, kKeyDeleted));
}
