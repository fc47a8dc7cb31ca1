#include <doctest/doctest.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "registry/registry_access.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

bool IsZero(const char* first, const char* last) {
    return std::all_of(first, last, [](char byte) { return byte == '\0'; });
}

LSTATUS EnumFirst(const CScratchKey& key, ValueBuffers& value) {
    std::fill(std::begin(value.name), std::end(value.name), '#');
    std::fill(std::begin(value.data), std::end(value.data), '#');
    return EnumValue(key.Get(), 0, value);
}

}  // namespace

TEST_CASE("opening a key answers with the system's own code") {
    CScratchKey scratch;
    const HKEY refused = scratch.Add("refused");
    scratch.Restrict(refused, 0);
    CUniqueKey key;
    CHECK(OpenKey(scratch.Get(), "absent", kReadAccess, key) == ERROR_FILE_NOT_FOUND);
    CHECK_FALSE(static_cast<bool>(key));
    CHECK(OpenKey(scratch.Get(), "refused", kReadAccess, key) == ERROR_ACCESS_DENIED);
    CHECK_FALSE(static_cast<bool>(key));
    CHECK(OpenKey(scratch.Get(), nullptr, kAllAccess, key) == ERROR_SUCCESS);
    CHECK(ObjectName(key.Get()) == ObjectName(scratch.Get()));
}

TEST_CASE("a key opened for reading cannot be written") {
    CScratchKey scratch;
    CUniqueKey key;
    REQUIRE(OpenKey(scratch.Get(), "", kReadAccess, key) == ERROR_SUCCESS);
    CHECK(::RegSetValueExA(key.Get(), "x", 0, REG_SZ, nullptr, 0) == ERROR_ACCESS_DENIED);
    REQUIRE(OpenKey(scratch.Get(), "", kAllAccess, key) == ERROR_SUCCESS);
    CHECK(::RegSetValueExA(key.Get(), "x", 0, REG_SZ, nullptr, 0) == ERROR_SUCCESS);
}

TEST_CASE("both value buffers are cleared to their last byte before each enumeration call") {
    CScratchKey key;
    ValueBuffers value;
    CHECK(EnumFirst(key, value) == ERROR_NO_MORE_ITEMS);
    CHECK(IsZero(std::begin(value.name), std::end(value.name)));
    CHECK(IsZero(std::begin(value.data), std::end(value.data)));

    SetText(key.Get(), "x", "y");
    CHECK(EnumFirst(key, value) == ERROR_SUCCESS);
    CHECK(IsZero(value.name + 1, std::end(value.name)));
    CHECK(IsZero(value.data + 1, std::end(value.data)));
}

TEST_CASE("a value name of 259 characters is read, a longer one makes the call fail") {
    CScratchKey fits;
    SetText(fits.Get(), std::string(259, 'n'), "d");
    ValueBuffers value;
    CHECK(EnumFirst(fits, value) == ERROR_SUCCESS);
    CHECK(std::string(value.name) == std::string(259, 'n'));

    CScratchKey tooLong;
    SetText(tooLong.Get(), std::string(260, 'n'), "d");
    CHECK(EnumFirst(tooLong, value) == ERROR_MORE_DATA);
}

TEST_CASE("data of 260 bytes without a zero are read and end, and one byte more makes the call fail") {
    CScratchKey fits;
    SetBytes(fits.Get(), "x", REG_BINARY, std::string(260, 'd'));
    ValueBuffers value;
    CHECK(EnumFirst(fits, value) == ERROR_SUCCESS);
    CHECK(std::string(value.data) == std::string(260, 'd'));

    CScratchKey tooLong;
    SetBytes(tooLong.Get(), "x", REG_BINARY, std::string(261, 'd'));
    CHECK(EnumFirst(tooLong, value) == ERROR_MORE_DATA);
    CHECK(IsZero(std::begin(value.name), std::end(value.name)));  // as Wine leaves them
    CHECK(IsZero(std::begin(value.data), std::end(value.data)));
}

TEST_CASE("subkey names are enumerated whole, and a failed call leaves no name") {
    CScratchKey scratch;
    const std::string longest(255, 'k');
    scratch.Add(longest);
    char name[kNameBytes + 1];
    std::fill(std::begin(name), std::end(name), '#');
    CHECK(EnumSubkey(scratch.Get(), 0, name) == ERROR_SUCCESS);
    CHECK(name == longest);
    CHECK(EnumSubkey(scratch.Get(), 1, name) == ERROR_NO_MORE_ITEMS);
    CHECK(IsZero(std::begin(name), std::end(name)));
}

TEST_CASE("a walk ends at the end, at a dead handle and at a deleted key, and nowhere else") {
    for (LSTATUS result : {259L, 6L, 1018L}) CHECK(EndsWalk(result));
    for (LSTATUS result : {0L, 1L, 2L, 5L, 8L, 87L, 234L, 1009L, 1010L, 1017L, 1450L}) {
        CAPTURE(result);
        CHECK_FALSE(EndsWalk(result));
    }
}

TEST_CASE("a deleted key and a dead handle answer with the codes that end a walk") {
    CScratchKey scratch;
    const HKEY deleted = scratch.Add("deleted");
    REQUIRE(DeleteOpenKey(deleted));
    ValueBuffers value;
    char name[kNameBytes + 1];
    CHECK(EnumValue(deleted, 0, value) == ERROR_KEY_DELETED);
    CHECK(EnumSubkey(deleted, 0, name) == ERROR_KEY_DELETED);

    scratch.AddLink("unreadable", kUnreadableKey);
    CUniqueKey unreadable;
    REQUIRE(OpenKey(scratch.Get(), "unreadable", kReadAccess, unreadable) == ERROR_SUCCESS);
    CHECK(EnumValue(unreadable.Get(), 0, value) == ERROR_INVALID_HANDLE);
    CHECK(EnumSubkey(unreadable.Get(), 0, name) == ERROR_INVALID_HANDLE);
}
