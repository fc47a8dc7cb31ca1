#include "registry/key_tree.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

bool IsEmpty(const CScratchKey& key) {
    return KeyTreeIsEmpty(key.Get(), key.Path(), [] {});
}

}  // namespace

TEST_CASE("a key without values and subkeys is empty") {
    CScratchKey key;
    CHECK(IsEmpty(key));
}

TEST_CASE("a tree of empty default values at every level is empty") {
    CScratchKey key;
    SetText(key.Get(), "", "");
    SetText(key.Add("a"), "", "");
    SetText(key.Add("a\\b"), "", "", REG_EXPAND_SZ);
    SetBytes(key.Add("c"), "", REG_BINARY, "");
    key.Add("d");
    CHECK(IsEmpty(key));
}

TEST_CASE("a value with a name and empty data makes a tree not empty, at any level") {
    for (const char* subkey : {"", "a", "a\\b", "a\\b\\c", "z"}) {
        CAPTURE(subkey);
        CScratchKey key;
        for (const char* other : {"a\\b\\c", "b", "z"}) SetText(key.Add(other), "", "");
        SetText(key.Add(subkey), "x", "");
        CHECK_FALSE(IsEmpty(key));
    }
}

TEST_CASE("a default value with text makes a tree not empty, at any level") {
    for (const char* subkey : {"", "a", "a\\b\\c", "z"}) {
        CAPTURE(subkey);
        CScratchKey key;
        for (const char* other : {"a\\b\\c", "b", "z"}) key.Add(other);
        SetText(key.Add(subkey), "", "text");
        CHECK_FALSE(IsEmpty(key));
    }
}

TEST_CASE("one empty subkey does not make up for a full one, whichever comes first") {
    CScratchKey first;
    SetText(first.Add("a"), "x", "");
    first.Add("b");
    CHECK_FALSE(IsEmpty(first));
    CScratchKey last;
    last.Add("a");
    SetText(last.Add("b"), "x", "");
    CHECK_FALSE(IsEmpty(last));
}

TEST_CASE("the default value's data count as text up to the first zero, whatever their type") {
    struct {
        DWORD type;
        std::string bytes;
        bool empty;
    } const rows[] = {
        {REG_DWORD, std::string("\0\0\0\0", 4), true},
        {REG_DWORD, std::string("\1\0\0\0", 4), false},
        {REG_BINARY, std::string("\0x", 2), true},
        {REG_BINARY, std::string("x\0", 2), false},
        {REG_MULTI_SZ, std::string("\0", 1), true},
        {REG_MULTI_SZ, std::string("a\0\0", 3), false},
        {REG_NONE, "x", false},
    };
    for (const auto& row : rows) {
        CAPTURE(row.type);
        CAPTURE(row.empty);
        CScratchKey key;
        SetBytes(key.Get(), "", row.type, row.bytes);
        CHECK(IsEmpty(key) == row.empty);
    }
}

TEST_CASE("default data that fill the buffer count, and data that do not fit are not seen") {
    CScratchKey fits;
    SetBytes(fits.Get(), "", REG_BINARY, std::string(260, 'd'));
    CHECK_FALSE(IsEmpty(fits));
    CScratchKey tooLong;
    SetBytes(tooLong.Get(), "", REG_BINARY, std::string(261, 'd'));
    CHECK(IsEmpty(tooLong));
    // The call leaves both buffers empty, so the name is not seen either.
    CScratchKey named;
    SetBytes(named.Get(), "x", REG_BINARY, std::string(261, 'd'));
    CHECK(IsEmpty(named));
}

TEST_CASE("a value that does not fit is passed over, and the next one is looked at") {
    CScratchKey key;
    SetBytes(key.Get(), "", REG_BINARY, std::string(300, 'd'));
    SetBytes(key.Get(), "a", REG_BINARY, std::string(300, 'd'));
    SetBytes(key.Get(), "b", REG_BINARY, "");
    CHECK_FALSE(IsEmpty(key));
}

TEST_CASE("a value whose name does not fit counts by what the call leaves of it") {
    CScratchKey key;
    SetText(key.Get(), std::string(300, 'n'), "");
    char name[260] = "";
    DWORD length = sizeof name;
    REQUIRE(::RegEnumValueA(key.Get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr) ==
            ERROR_MORE_DATA);
    CHECK(IsEmpty(key) == (name[0] == '\0'));
}

TEST_CASE("a subkey that cannot be opened counts as empty") {
    CScratchKey key;
    const HKEY refused = key.Add("refused");
    SetText(refused, "x", "y");
    CHECK_FALSE(IsEmpty(key));
    key.Restrict(refused, 0);
    CHECK(IsEmpty(key));
    SetText(key.Add("z"), "x", "");  // and does not hide its neighbours
    CHECK_FALSE(IsEmpty(key));
}

TEST_CASE("a subkey that may only be read is looked into") {
    CScratchKey key;
    const HKEY readable = key.Add("readable");
    SetText(readable, "x", "y");
    key.Restrict(readable, KEY_READ);
    CHECK_FALSE(IsEmpty(key));
}

TEST_CASE("a subkey whose name holds a zero cannot be opened and counts as empty") {
    CScratchKey key;
    const CUniqueKey hostile = CreateKeyByCountedName(key.Get(), std::wstring(L"a\0b", 3));
    REQUIRE(static_cast<bool>(hostile));
    SetText(hostile.Get(), "x", "y");
    CHECK(IsEmpty(key));
    CHECK(DeleteOpenKey(hostile.Get()));
}

TEST_CASE("subkeys whose names begin with a zero are passed over, and the key is not walked again for each") {
    CScratchKey key;
    std::vector<CUniqueKey> hostile;
    for (const wchar_t letter : {L'a', L'b', L'c'})
        hostile.push_back(CreateKeyByCountedName(key.Get(), std::wstring{L'\0', letter}));
    key.Add("beside");
    CHECK(IsEmpty(key));
    SetText(key.Add("beside"), "x", "y");
    CHECK_FALSE(IsEmpty(key));
    for (const CUniqueKey& subkey : hostile) CHECK(DeleteOpenKey(subkey.Get()));
}
