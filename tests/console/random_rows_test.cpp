// The formats of rows and the code page's texts under random changes. The reader needs the system's code
// page, so it is not among what is fuzzed natively.

#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <optional>
#include <random>

#include "console/code_page.h"
#include "console/row_formats.h"

namespace {

using Rows = std::vector<Row>;
using Lines = std::vector<std::string>;

constexpr unsigned kSeed = 20090514;
constexpr RowFormat kFormats[] = {RowFormat::Csv, RowFormat::Json, RowFormat::JsonLines};
enum class Encoding { Utf8, Utf8WithMark, Utf16 };
constexpr Encoding kEncodings[] = {Encoding::Utf8, Encoding::Utf8WithMark, Encoding::Utf16};

/// What the formats look for, so that chance need not spell it.
constexpr std::string_view kTokens[] = {
    "\"",       "\"\"",     ",",        "\r\n",     "\n",           "{",    "}",           "[",        "]",
    ":",        "\\",       "\\u0000",  "\\ud800",  "\\uF781",      "null", "1e999",       "\"rows\"", "key,",
    "\"key\":", "\xEF\xBB", "\xFF\xFE", "\xED\xA0", "\xEF\x9E\x81", " ",    "{\"rows\": ["};

class CRandom {
public:
    explicit CRandom(unsigned seed) : m_source(seed) {}

    /// A number below another.
    std::size_t Below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_source);
    }
    char Byte(int first = 0) {
        return static_cast<char>(first + static_cast<int>(Below(256u - static_cast<unsigned>(first))));
    }
    char Letter() { return static_cast<char>('a' + Below(26)); }
    template <class Range>
    const auto& OneOf(const Range& range) {
        return range[Below(std::size(range))];
    }
    /// A text of bytes from one on; half of all texts are plain.
    std::string Text(std::size_t most, int first = 1) {
        const bool isPlain = Below(2) == 0;
        std::string text(Below(most + 1), '\0');
        for (char& c : text) c = isPlain ? Letter() : Byte(first);
        return text;
    }

private:
    std::mt19937 m_source;
};

Rows RandomRows(CRandom& random, std::size_t most) {
    Rows rows(random.Below(most + 1));
    for (Row& row : rows)
        row = {random.Text(40), random.Text(20), random.Text(20),
               random.Text(40), random.Text(12), random.Text(30)};
    return rows;
}

std::string InEncoding(const std::string& utf8, Encoding encoding) {
    if (encoding == Encoding::Utf8) return utf8;
    if (encoding == Encoding::Utf8WithMark) return "\xEF\xBB\xBF" + utf8;
    std::wstring wide(utf8.size(), L'\0');
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                             wide.data(), static_cast<int>(wide.size()));
    std::string bytes("\xFF\xFE");
    for (const wchar_t c : wide.substr(0, static_cast<std::size_t>(length)))
        bytes += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    return bytes;
}

/// Flips a bit, cuts, puts something in, or changes two pieces with one another.
std::string Mutated(std::string text, CRandom& random) {
    const std::size_t at = random.Below(text.size() + 1);
    switch (random.Below(5)) {
        case 0:
            if (at < text.size()) text[at] = static_cast<char>(text[at] ^ 1 << random.Below(8));
            return text;
        case 1:
            return text.substr(0, at);
        case 2:
            return text.erase(at, random.Below(30));
        case 3:
            return text.insert(at,
                               random.Below(2) == 0 ? std::string(random.OneOf(kTokens)) : random.Text(4, 0));
        default:
            const std::size_t middle = random.Below(at + 1);
            std::rotate(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(middle),
                        text.begin() + static_cast<std::ptrdiff_t>(at));
            return text;
    }
}

Lines LinesWithEnds(const std::string& text) {
    Lines lines;
    for (std::size_t at = 0; at < text.size(); at += lines.back().size())
        lines.push_back(text.substr(at, std::min(text.find('\n', at), text.size() - 1) + 1 - at));
    return lines;
}

std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

/// Reads a text, of which anything may be wrong. @return the rows; nothing for a text that is refused.
std::optional<Rows> ReadAnything(const std::string& text) {
    const auto read = ReadRows(text);
    if (const auto* error = std::get_if<RowsError>(&read)) {
        CHECK_FALSE(error->text.empty());
        CHECK(error->text.find_first_of(std::string("\r\n\0", 3)) == std::string::npos);
        return std::nullopt;
    }
    return std::get<Rows>(read);
}

/// How many rows of two lists of the same length differ.
std::size_t CountDifferent(const Rows& some, const Rows& others) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < some.size(); ++index) count += some[index] != others[index];
    return count;
}

}  // namespace

TEST_CASE("rows are read, or refused with a reason, whatever happened to their text") {
    CRandom random(kSeed);
    int taken = 0;
    int refused = 0;
    for (int round = 0; round < 20'000; ++round) {
        CAPTURE(kSeed);
        CAPTURE(round);
        const RowFormat format = random.OneOf(kFormats);
        const Rows rows = RandomRows(random, 5);
        std::string text = InEncoding(WriteRows(rows, format, true), random.OneOf(kEncodings));
        if (!rows.empty()) REQUIRE(ReadAnything(text) == rows);
        for (std::size_t count = 1 + random.Below(2); count > 0; --count) text = Mutated(text, random);
        const std::optional<Rows> read = ReadAnything(text);
        ++(read.has_value() ? taken : refused);
        if (!read.has_value() || read->empty()) continue;
        // What was taken can be written and read again, so it holds nothing that a row cannot hold.
        for (const RowFormat other : kFormats) CHECK(ReadAnything(WriteRows(*read, other, true)) == read);
    }
    MESSAGE("seed " << kSeed << ": " << taken << " texts taken, " << refused << " refused");
    CHECK(taken > 1000);
    CHECK(refused > 1000);
}

TEST_CASE("a change in one line of json lines changes no other row") {
    CRandom random(kSeed);
    int taken = 0;
    for (int round = 0; round < 10'000; ++round) {
        CAPTURE(kSeed);
        CAPTURE(round);
        Rows rows = RandomRows(random, 6);
        rows.resize(rows.size() + 2);
        Lines lines = LinesWithEnds(WriteRows(rows, RowFormat::JsonLines, true));
        REQUIRE(lines.size() == rows.size());
        const std::size_t changed = random.Below(lines.size());
        std::string line = Mutated(lines[changed].substr(0, lines[changed].size() - 1), random);
        std::ranges::replace(line, '\n', ' ');
        lines[changed] = line + "\n";
        const std::optional<Rows> read = ReadAnything(InEncoding(Joined(lines), Encoding::Utf8));
        if (!read.has_value()) continue;
        ++taken;
        Rows others = rows;
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(changed));
        Rows othersRead = *read;
        if (read->size() == rows.size())
            othersRead.erase(othersRead.begin() + static_cast<std::ptrdiff_t>(changed));
        CHECK(othersRead == others);
    }
    MESSAGE("seed " << kSeed << ": " << taken << " texts taken");
    CHECK(taken > 1000);
}

TEST_CASE("lines of json lines in another order are the same rows in that order") {
    CRandom random(kSeed);
    for (int round = 0; round < 2000; ++round) {
        CAPTURE(round);
        Rows rows = RandomRows(random, 6);
        rows.resize(rows.size() + 2);
        Lines lines = LinesWithEnds(WriteRows(rows, RowFormat::JsonLines, true));
        const std::size_t one = random.Below(rows.size());
        const std::size_t other = random.Below(rows.size());
        std::swap(lines[one], lines[other]);
        std::swap(rows[one], rows[other]);
        CHECK(ReadAnything(InEncoding(Joined(lines), random.OneOf(kEncodings))) == rows);
    }
}

TEST_CASE("another letter in a csv file changes one row at most") {
    CRandom random(kSeed);
    for (int round = 0; round < 5000; ++round) {
        CAPTURE(round);
        Rows rows = RandomRows(random, 6);
        rows.push_back({"key", "time", "name", "data", "check", "reason"});
        std::string text = WriteRows(rows, RowFormat::Csv, true);
        const std::size_t names = text.find('\n') + 1;
        const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
        std::size_t at = names + random.Below(text.size() - names);
        while (!isLetter(text[at])) at = names + random.Below(text.size() - names);
        text[at] = random.Letter();
        const std::optional<Rows> read = ReadAnything(InEncoding(text, random.OneOf(kEncodings)));
        REQUIRE(read.has_value());
        REQUIRE(read->size() == rows.size());
        CHECK(CountDifferent(*read, rows) <= 1);
    }
}

TEST_CASE("json that nests without end is refused") {
    constexpr std::size_t kLevels = 100'000;
    const std::string opening(kLevels, '[');
    const std::string closing(kLevels, ']');
    for (const std::string& text : {"{\"rows\": " + opening, "{\"rows\": " + opening + closing + "}",
                                    "{\"key\": " + opening + closing + "}"})
        CHECK_FALSE(ReadAnything(text).has_value());
}

TEST_CASE("random bytes become UTF-8 and come back as they were") {
    CRandom random(kSeed);
    for (int round = 0; round < 50'000; ++round) {
        CAPTURE(round);
        const std::string bytes = random.Text(200, 0);
        const std::string utf8 = ToUtf8(bytes);
        CHECK(IsUtf8(utf8));
        CHECK(FromUtf8(utf8) == bytes);
    }
}

TEST_CASE("random texts are UTF-8 and UTF-16 as a whole, or refused") {
    CRandom random(kSeed);
    for (int round = 0; round < 50'000; ++round) {
        CAPTURE(round);
        const std::string bytes = Mutated(ToUtf8(random.Text(20)), random);
        const std::optional<std::string> text = FromUtf8(bytes);
        CHECK((!text.has_value() || IsUtf8(bytes)));
        if (text.has_value()) CHECK(FromUtf8(ToUtf8(*text)) == text);
        const std::optional<std::string> utf8 = Utf16ToUtf8(random.Text(20, 0));
        if (utf8.has_value()) CHECK(IsUtf8(*utf8));
    }
}
