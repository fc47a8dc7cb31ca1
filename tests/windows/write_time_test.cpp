#include <doctest/doctest.h>

#include "registry/key_path.h"
#include "registry/registry_access.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"
#include "tests/support/write_times.h"

TEST_CASE("these tests run in a time zone other than UTC") {
    TIME_ZONE_INFORMATION zone{};
    ::GetTimeZoneInformation(&zone);
    CHECK(zone.Bias != 0);
}

TEST_CASE("a key's last write time is told in UTC, each part with its leading zeros") {
    struct {
        std::uint64_t fileTime;
        const char* text;
    } const rows[] = {
        {0x1C99D612383D280, "2009/03/05 07:08:09"},
        {0x1C99EE225C16A80, "2009/03/07 05:04:09"},
        {0x1BF53EB24D4A980 + 9'999'999, "1999/12/31 23:59:59"},  // a part of a second is not rounded up
    };
    for (const auto& row : rows) {
        const CLoadedHive hive(row.fileTime);
        CHECK(FormatWriteTime(CLoadedHive::SubkeyPath()) == row.text);
    }
}

TEST_CASE("a key written just now tells the time that the system keeps for it") {
    CScratchKey key;
    const HKEY child = key.Add("child");
    CHECK(FormatWriteTime(key.Path()) == UtcText(KeyWriteTime(key.Get())));
    CHECK(FormatWriteTime(key.Path() + "\\child") == UtcText(KeyWriteTime(child)));
    CHECK(QueryWriteTime(child) == UtcText(KeyWriteTime(child)));
}

TEST_CASE("a root itself tells its write time") {
    for (const char* path :
         {"\\HKEY_LOCAL_MACHINE", "\\HKEY_CURRENT_USER", "\\HKEY_USERS", "\\HKEY_CLASSES_ROOT"}) {
        CAPTURE(path);
        CHECK(FormatWriteTime(path) == UtcText(KeyWriteTime(SplitKeyPath(path)->root)));
    }
}

TEST_CASE("a key whose root name is not one of the long names tells no write time") {
    CScratchKey key;
    CHECK(FormatWriteTime(key.Path()));
    CHECK_FALSE(FormatWriteTime("\\HKCU\\" + key.Subkey()));
    CHECK_FALSE(FormatWriteTime("\\hkey_current_user\\" + key.Subkey()));
    CHECK_FALSE(FormatWriteTime("\\" + key.Subkey()));
    CHECK_FALSE(FormatWriteTime(""));
}

TEST_CASE("a key that does not exist tells no write time") {
    CScratchKey key;
    CHECK_FALSE(FormatWriteTime(key.Path() + "\\absent"));
}

TEST_CASE("read access is enough for a write time, and less than that is not") {
    CScratchKey key;
    key.Restrict(key.Get(), KEY_READ);
    CHECK(FormatWriteTime(key.Path()));
    key.Restrict(key.Get(), KEY_QUERY_VALUE);
    CHECK_FALSE(FormatWriteTime(key.Path()));
    key.Restrict(key.Get(), 0);
    CHECK_FALSE(FormatWriteTime(key.Path()));
}

TEST_CASE("a key that opens but cannot be queried tells no write time") {
    CScratchKey key;
    key.AddLink("unreadable", kUnreadableKey);
    CHECK_FALSE(FormatWriteTime(key.Path() + "\\unreadable"));
    CHECK_FALSE(QueryWriteTime(nullptr));
}

TEST_CASE("telling a write time leaves no handle open") {
    CScratchKey key;
    const std::size_t before = OwnHandles().size();
    for (int round = 0; round < 20; ++round) CHECK(FormatWriteTime(key.Path()));
    CHECK(OwnHandles().size() == before);
}
