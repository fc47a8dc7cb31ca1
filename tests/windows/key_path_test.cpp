#include <doctest/doctest.h>

#include <string>

#include "registry/key_path.h"
#include "registry/registry_access.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

TEST_CASE("each long root name leads to its predefined key") {
    struct {
        const char* name;
        HKEY root;
        unsigned number;
    } const rows[] = {
        {"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT, 0x80000000},
        {"HKEY_CURRENT_USER", HKEY_CURRENT_USER, 0x80000001},
        {"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE, 0x80000002},
        {"HKEY_USERS", HKEY_USERS, 0x80000003},
        {"HKEY_PERFORMANCE_DATA", HKEY_PERFORMANCE_DATA, 0x80000004},
        {"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG, 0x80000005},
        {"HKEY_DYN_DATA", HKEY_DYN_DATA, 0x80000006},
    };
    for (const auto& row : rows) {
        CAPTURE(row.name);
        const auto location = SplitKeyPath("\\" + std::string(row.name) + "\\a\\b c");
        REQUIRE(location);
        CHECK(location->root == row.root);
        CHECK(static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(location->root) & 0xFFFFFFFF) == row.number);
        CHECK(location->subkey == "a\\b c");
    }
}

TEST_CASE("a path of a root alone opens the root itself") {
    const auto location = SplitKeyPath("\\HKEY_LOCAL_MACHINE");
    REQUIRE(location);
    CHECK(location->root == HKEY_LOCAL_MACHINE);
    CHECK(location->subkey.empty());
    CUniqueKey key;
    REQUIRE(OpenKey(location->root, location->subkey.c_str(), kReadAccess, key) == ERROR_SUCCESS);
    CUniqueKey software;
    CHECK(OpenKey(key.Get(), "Software\\Microsoft", kReadAccess, software) == ERROR_SUCCESS);
}

TEST_CASE("a path leads to the key that it names") {
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT}) {
        CScratchKey scratch(root);
        const HKEY child = scratch.Add("a\\b");
        const auto location = SplitKeyPath(scratch.Path() + "\\a\\b");
        REQUIRE(location);
        CUniqueKey key;
        REQUIRE(OpenKey(location->root, location->subkey.c_str(), kReadAccess, key) == ERROR_SUCCESS);
        CHECK(ObjectName(key.Get()) == ObjectName(child));
    }
}

TEST_CASE("a root name that is not exactly one of the long names leads nowhere") {
    for (const char* path : {"\\HKLM\\SOFTWARE", "\\HKCU", "\\hkey_local_machine\\x", "\\Hkey_Users",
                             "\\HKEY_LOCAL_MACHINE \\x", "\\ HKEY_USERS", "\\HKEY_USERSX\\a",
                             "\\HKEY_USER\\a", "\\MACHINE\\x", "\\HKEY_UNKNOWN\\x", "\\\\x", "\\", ""}) {
        CAPTURE(path);
        CHECK_FALSE(SplitKeyPath(path));
    }
}

TEST_CASE("the root name starts behind the first backslash, whatever stands before it") {
    const auto behind = SplitKeyPath("ignored\\HKEY_USERS\\a");
    REQUIRE(behind);
    CHECK(behind->root == HKEY_USERS);
    CHECK(behind->subkey == "a");
    CHECK_FALSE(SplitKeyPath("HKEY_USERS\\a"));  // so here the root name would be "a"
    const auto bare = SplitKeyPath("HKEY_USERS");
    REQUIRE(bare);
    CHECK(bare->root == HKEY_USERS);
    CHECK(bare->subkey.empty());
}
