// The path in a record of cached program details.
#include "analysis/system/cache_record_rules.h"

#include <doctest/doctest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;  // exactly the record: nothing behind it may be read

Bytes Record(std::u16string_view path, std::initializer_list<unsigned char> rest = {}) {
    Bytes record(28, 0x5A);
    for (const char16_t character : path) {
        record.push_back(static_cast<unsigned char>(character & 0xFF));
        record.push_back(static_cast<unsigned char>(character >> 8));
    }
    record.insert(record.end(), rest);
    return record;
}

std::u16string PathOf(const Bytes& record) { return CacheRecordPath(record).text; }

}  // namespace

TEST_CASE("a record's path begins at byte 28 and ends at its terminator") {
    CHECK(PathOf(Record(u"C:\\x.exe", {0, 0})) == u"C:\\x.exe");
    CHECK(PathOf(Record(u"C:\\x.exe", {0, 0, 'y', 0})) == u"C:\\x.exe");
    CHECK(PathOf(Record(u"", {0, 0, 'y', 0})).empty());
}

TEST_CASE("a record without a terminator holds a path up to its last whole character") {
    CHECK(PathOf(Record(u"C:\\x.exe")) == u"C:\\x.exe");
    CHECK(PathOf(Record(u"C:\\x.exe", {'y'})) == u"C:\\x.exe");
    CHECK(PathOf(Record(u"C:\\x.exe", {0})) == u"C:\\x.exe");
}

TEST_CASE("a record too short for a character holds no path") {
    for (std::size_t size = 0; size <= 29; ++size) {
        CAPTURE(size);
        CHECK(PathOf(Bytes(size, 'x')).empty());
    }
    CHECK(PathOf(Bytes(30, 'x')) == u"\u7878");
}

TEST_CASE("characters are two bytes, the lower one first, and only both zero end the path") {
    CHECK(PathOf(Record(u"\u0100\u00FF\uFFFF\u8000")) == u"\u0100\u00FF\uFFFF\u8000");
    CHECK(PathOf(Record(u"a", {0, 1, 1, 0, 0, 0})) == u"a\u0100\u0001");
    CHECK(PathOf(Record(u"a\u0100", {0, 0})) == u"a\u0100");
}

TEST_CASE("a record's path is bounded") {
    for (const std::size_t length : {258U, 259U}) {
        CAPTURE(length);
        const std::u16string path(length, u'x');
        CHECK(PathOf(Record(path, {0, 0})) == path);
        CHECK(PathOf(Record(path)) == path);
    }
    CHECK(PathOf(Record(std::u16string(10'000, u'x'))).size() < 10'000);
}

TEST_CASE("a path that goes on behind the longest one is told from a whole one") {
    CHECK(CacheRecordPath(Record(std::u16string(259, u'x'))).isWhole);
    CHECK(CacheRecordPath(Record(std::u16string(259, u'x'), {0, 0, 'y', 0})).isWhole);
    CHECK_FALSE(CacheRecordPath(Record(std::u16string(260, u'x'))).isWhole);
    CHECK(CacheRecordPath(Record(u"")).isWhole);
}
