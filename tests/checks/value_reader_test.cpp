#include "registry/value_reader.h"

#include <doctest/doctest.h>

#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

/// What a reader makes of a key's only value.
struct Reading {
    LSTATUS result;
    std::string name, data;
    DWORD type;
};

Reading ReadFirst(HKEY key, CValueReader reader) {
    const LSTATUS result = reader.Read(key, 0);
    CHECK(reader.HasName() == (reader.Name()[0] != '\0'));
    CHECK(reader.HasData() == (reader.Data()[0] != '\0'));
    return {result, reader.Name(), reader.Data(), reader.Type()};
}

Reading ReadNameOf(std::size_t length, CValueReader reader) {
    const CScratchKey key;
    SetText(key.Get(), std::string(length, 'n'), "d");
    return ReadFirst(key.Get(), std::move(reader));
}

Reading ReadDataOf(std::size_t bytes, CValueReader reader) {
    const CScratchKey key;
    SetBytes(key.Get(), "n", REG_SZ, std::string(bytes - 1, 'd') + '\0');
    return ReadFirst(key.Get(), std::move(reader));
}

}  // namespace

TEST_CASE("a value is read with its name, data and type") {
    const CScratchKey key;
    SetText(key.Get(), "Name", "Data", REG_EXPAND_SZ);
    const Reading reading = ReadFirst(key.Get(), {250, 250});
    CHECK(reading.result == ERROR_SUCCESS);
    CHECK(reading.name == "Name");
    CHECK(reading.data == "Data");
    CHECK(reading.type == REG_EXPAND_SZ);
}

TEST_CASE("a name fits up to one byte below the buffer's size, for its terminator") {
    CHECK(ReadNameOf(8, {10, 10}).name == "nnnnnnnn");
    CHECK(ReadNameOf(9, {10, 10}).name == "nnnnnnnnn");
    const Reading tooLong = ReadNameOf(10, {10, 10});
    CHECK(tooLong.result == ERROR_MORE_DATA);
    CHECK(tooLong.name.empty());
    CHECK(tooLong.data.empty());
}

TEST_CASE("data fit up to the buffer's size") {
    CHECK(ReadDataOf(9, {10, 10}).data == "dddddddd");
    CHECK(ReadDataOf(10, {10, 10}).data == "ddddddddd");
    const Reading tooLarge = ReadDataOf(11, {10, 10});
    CHECK(tooLarge.result == ERROR_MORE_DATA);
    CHECK(tooLarge.name.empty());
    CHECK(tooLarge.data.empty());
}

TEST_CASE("data without a terminator are taken up to their end, and others up to the first zero") {
    const CScratchKey key;
    SetBytes(key.Get(), "n", REG_BINARY, "0123456789");
    CHECK(ReadFirst(key.Get(), {10, 10}).data == "0123456789");
    SetBytes(key.Get(), "n", REG_BINARY, std::string("ab\0cd", 5));
    CHECK(ReadFirst(key.Get(), {10, 10}).data == "ab");
    CHECK(QueryText(key.Get(), "n", 10).text == "ab");
    CHECK(QueryWholeText(key.Get(), "n").text == "ab");
}

TEST_CASE("a reader leaves nothing of one value in the next") {
    const CScratchKey key;
    SetText(key.Get(), "a", "a long text");
    SetBytes(key.Get(), "b", REG_BINARY, "x");
    CValueReader reader(20, 20);
    REQUIRE(reader.Read(key.Get(), 0) == ERROR_SUCCESS);
    REQUIRE(reader.Read(key.Get(), 1) == ERROR_SUCCESS);
    CHECK(std::string(reader.Data()) == "x");
    CHECK(reader.Read(key.Get(), 2) == ERROR_NO_MORE_ITEMS);
    CHECK_FALSE(reader.HasName());
    CHECK_FALSE(reader.HasData());
}

TEST_CASE("a growing reader reads names and data of any size") {
    for (const std::size_t size :
         {std::size_t{9}, std::size_t{10}, std::size_t{11}, std::size_t{300}, std::size_t{5000}}) {
        CAPTURE(size);
        const Reading name = ReadNameOf(size, {10, 10, TooLarge::Grow});
        CHECK(name.result == ERROR_SUCCESS);
        CHECK(name.name == std::string(size, 'n'));
        CHECK(name.data == "d");
        const Reading data = ReadDataOf(size, {10, 10, TooLarge::Grow});
        CHECK(data.result == ERROR_SUCCESS);
        CHECK(data.data == std::string(size - 1, 'd'));
        CHECK(data.name == "n");
    }
}

TEST_CASE("a growing reader reads the largest value whole, and a small one behind it") {
    const CScratchKey key;
    SetText(key.Get(), "a", std::string(70'000, 'x'));
    SetText(key.Get(), "b", "small");
    CValueReader reader(10, 10, TooLarge::Grow);
    REQUIRE(reader.Read(key.Get(), 0) == ERROR_SUCCESS);
    CHECK(std::string(reader.Data()).size() == 70'000);
    REQUIRE(reader.Read(key.Get(), 1) == ERROR_SUCCESS);
    CHECK(std::string(reader.Data()) == "small");
    CHECK(reader.Read(key.Get(), 2) == ERROR_NO_MORE_ITEMS);
}

TEST_CASE("a growing reader gives back a failure that more room does not mend") {
    const CUniqueKey none;
    CHECK(ReadFirst(none.Get(), {10, 10, TooLarge::Grow}).result == ERROR_INVALID_HANDLE);
    const CScratchKey key;
    CHECK(ReadFirst(key.Get(), {10, 10, TooLarge::Grow}).result == ERROR_NO_MORE_ITEMS);
}

TEST_CASE("a reader of names alone passes no value over for its data") {
    const Reading reading = ReadDataOf(5000, {10, 0});
    CHECK(reading.result == ERROR_SUCCESS);
    CHECK(reading.name == "n");
    CHECK(reading.data.empty());
    CHECK(ReadNameOf(300, {10, 0, TooLarge::Grow}).name == std::string(300, 'n'));
}

TEST_CASE("a query reads data up to the size it is given") {
    const CScratchKey key;
    SetText(key.Get(), "n", "123456789");  // ten bytes
    CHECK(QueryText(key.Get(), "n", 11).text == "123456789");
    CHECK(QueryText(key.Get(), "n", 10).text == "123456789");
    const QueriedText tooLarge = QueryText(key.Get(), "n", 9);
    CHECK(tooLarge.result == ERROR_MORE_DATA);
    CHECK_FALSE(tooLarge.Succeeded());
    CHECK_FALSE(tooLarge.IsAbsent());
    CHECK(tooLarge.text.empty());
}

TEST_CASE("a query tells an absent value, the type of another, and finds names in any letter case") {
    const CScratchKey key;
    CHECK(QueryText(key.Get(), "", 10).IsAbsent());
    CHECK(QueryWholeText(key.Get(), "n").IsAbsent());
    SetText(key.Get(), "", "default", REG_EXPAND_SZ);
    SetText(key.Get(), "Name", "x");
    CHECK(QueryText(key.Get(), "", 10).text == "default");
    CHECK(QueryText(key.Get(), "", 10).type == REG_EXPAND_SZ);
    CHECK(QueryText(key.Get(), "nAME", 10).Succeeded());
    CHECK(QueryWholeText(key.Get(), "nAME").text == "x");
}

TEST_CASE("a whole query reads data of any size") {
    const CScratchKey key;
    for (const std::size_t size : {std::size_t{0}, std::size_t{250}, std::size_t{300}, std::size_t{5000}}) {
        SetBytes(key.Get(), "n", REG_BINARY, std::string(size, 'x'));
        CHECK(QueryWholeText(key.Get(), "n").Succeeded());
        CHECK(QueryWholeText(key.Get(), "n").text == std::string(size, 'x'));
    }
}

TEST_CASE("an exact query wants the name's own letter case") {
    const CScratchKey key;
    SetText(key.Get(), "Name", "x");
    SetText(key.Get(), "a large value in front", std::string(5000, 'y'));
    const CancelPoll goOn = [] {};
    CHECK(FindValueNamed(key.Get(), "Name", goOn) == ERROR_SUCCESS);
    CHECK(FindValueNamed(key.Get(), "name", goOn) == ERROR_FILE_NOT_FOUND);
    CHECK(FindValueNamed(key.Get(), "Nam", goOn) == ERROR_FILE_NOT_FOUND);
    CHECK(FindValueNamed(key.Get(), "", goOn) == ERROR_FILE_NOT_FOUND);
    CHECK(QueryTextExactly(key.Get(), "Name", 10, goOn).text == "x");
    CHECK(QueryTextExactly(key.Get(), "name", 10, goOn).IsAbsent());
    CHECK(QueryTextExactly(key.Get(), "Name", 1, goOn).result == ERROR_MORE_DATA);
}

TEST_CASE("an exact query polls before each value, and a key that is gone is not a key without the value") {
    CScratchKey key;
    SetText(key.Get(), "a", "x");
    SetText(key.Get(), "b", "x");
    static int polls;
    polls = 0;
    CHECK(FindValueNamed(key.Get(), "c", [] { ++polls; }) == ERROR_FILE_NOT_FOUND);
    CHECK(polls == 3);
    const HKEY gone = key.Add("gone");
    REQUIRE(::RegDeleteKeyA(key.Get(), "gone") == ERROR_SUCCESS);
    CHECK(FindValueNamed(gone, "c", [] {}) == ERROR_KEY_DELETED);
    CHECK_FALSE(QueryTextExactly(gone, "c", 10, [] {}).IsAbsent());
}

TEST_CASE("a key without subkeys and one without values are told apart") {
    CScratchKey key;
    CHECK(HasNoSubkeys(key.Get()));
    CHECK(HasNoValues(key.Get()));
    SetText(key.Get(), "", "");
    CHECK_FALSE(HasNoValues(key.Get()));
    CHECK(HasNoSubkeys(key.Get()));
    key.Add("sub");
    CHECK_FALSE(HasNoSubkeys(key.Get()));
}

TEST_CASE("a key that cannot be enumerated is not said to hold nothing") {
    CHECK_FALSE(HasNoSubkeys(nullptr));
    CHECK_FALSE(HasNoValues(nullptr));
}

TEST_CASE("a value too large for any buffer is still a value") {
    const CScratchKey key;
    SetText(key.Get(), std::string(1000, 'n'), std::string(5000, 'x'));
    CHECK_FALSE(HasNoValues(key.Get()));
}
