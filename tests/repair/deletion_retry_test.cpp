#include <doctest/doctest.h>

#include <initializer_list>
#include <string>

#include "repair/key_deletion.h"
#include "tests/repair/repair_bench.h"
#include "tests/repair/skipped_sleeps.h"
#include "tests/support/call_hook.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr int kWithoutEnd = 20'000;  // far more often than ten seconds allow

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

/// Makes a key anew each time it is deleted, as a program would that watches it; or two keys in turn, or ever
/// new ones; or the key with something in it, the same each time or another.
struct Watcher {
    static inline FARPROC before = nullptr;
    static inline HKEY home = nullptr;
    static inline int left = 0;
    static inline bool inTurn = false;
    static inline bool everNew = false;
    static inline const char* inside = "";  // of the key that comes back; '#' becomes a number

    static LSTATUS WINAPI Delete(HKEY parent, LPCSTR subkey) {
        const auto deleteKey = reinterpret_cast<decltype(&::RegDeleteKeyA)>(reinterpret_cast<void*>(before));
        const LSTATUS result = deleteKey(parent, subkey);
        const std::string name = subkey;
        if (result == ERROR_SUCCESS && everNew && name.starts_with("new") && left-- > 0)
            MakeKey(home, "new" + std::to_string(left) + Inside());
        const std::string other = name == "again" ? "then" : "again";
        if (result == ERROR_SUCCESS && (name == "again" || name == "then") && left-- > 0)
            MakeKey(home, (inTurn ? other : name) + Inside());
        return result;
    }
    [[nodiscard]] static std::string Inside() {
        std::string path = inside;
        if (const std::size_t number = path.find('#'); number != std::string::npos)
            path.replace(number, 1, std::to_string(left));
        return path;
    }
};

/// A key whose deletion is watched.
struct Watched {
    /// @param home     where keys are made anew, below the scratch key.
    /// @param subkeys  what is there, below the scratch key.
    Watched(const std::string& home, std::initializer_list<const char*> subkeys) {
        Watcher::home = scratch.Add(home);
        for (const char* subkey : subkeys) scratch.Add(subkey);
        Watcher::before = hook.Before();
        Watcher::left = kWithoutEnd;
        Watcher::inTurn = Watcher::everNew = false;
        Watcher::inside = "";
    }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
    ~Watched() { Watcher::left = 0; }

    CScratchKey scratch;
    const CCallHook hook{"RegDeleteKeyA", Address(&Watcher::Delete)};
};

/// Tells nothing of a key that is not open for querying, as on Windows; Wine tells it all the same.
struct CountGuard {
    static inline FARPROC before = nullptr;

    static LSTATUS WINAPI Query(HKEY key, LPSTR cls, LPDWORD classLength, LPDWORD reserved, LPDWORD subkeys,
                                LPDWORD longestSubkey, LPDWORD longestClass, LPDWORD values,
                                LPDWORD longestName, LPDWORD largestData, LPDWORD security, PFILETIME time) {
        if ((GrantedRights(key) & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
        return reinterpret_cast<decltype(&::RegQueryInfoKeyA)>(reinterpret_cast<void*>(before))(
            key, cls, classLength, reserved, subkeys, longestSubkey, longestClass, values, longestName,
            largestData, security, time);
    }

    CCallHook hook{"RegQueryInfoKeyA", Address(&Query), &before};
};

/// Refuses one key until a time has come.
struct Guard {
    static inline FARPROC before = nullptr;
    static inline DWORD start = 0;
    static inline DWORD patience = 0;
    static inline std::string tries;

    static LSTATUS WINAPI Delete(HKEY parent, LPCSTR subkey) {
        tries += subkey;
        if (std::string("b") == subkey && ::GetTickCount() - start < patience) return ERROR_BUSY;
        return reinterpret_cast<decltype(&::RegDeleteKeyA)>(reinterpret_cast<void*>(before))(parent, subkey);
    }
};

/// Lets one enumeration of subkeys fail, counted from 0.
struct Enumerations {
    static inline FARPROC before = nullptr;
    static inline int toFailure = 0;

    static LSTATUS WINAPI Next(HKEY key, DWORD index, LPSTR name, LPDWORD length, LPDWORD reserved, LPSTR cls,
                               LPDWORD classLength, PFILETIME time) {
        if (toFailure-- == 0) return ERROR_NO_SYSTEM_RESOURCES;
        return reinterpret_cast<decltype(&::RegEnumKeyExA)>(reinterpret_cast<void*>(before))(
            key, index, name, length, reserved, cls, classLength, time);
    }
};

}  // namespace

TEST_CASE("a subkey that comes back some times is deleted as often") {
    const Watched watched("dead", {R"(dead\again)", R"(dead\z)"});
    Watcher::left = 5;
    CHECK(DeleteBelow(watched.scratch, "dead") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(watched.scratch, "dead"));
}

TEST_CASE(
    "subkeys that come back in turn for ever hold the deletion for ten seconds, then their parents stay") {
    const Watched watched(R"(dead\inner)", {R"(dead\a)", R"(dead\inner\again)"});
    Watcher::inTurn = true;
    const CSkippedSleeps time;
    CHECK(DeleteBelow(watched.scratch, "dead") != ERROR_SUCCESS);
    CHECK(time.Taken() >= 10'000);
    CHECK(time.Taken() < 15'000);
    CHECK_FALSE(ExistsBelow(watched.scratch, R"(dead\a)"));
    CHECK(ExistsBelow(watched.scratch, R"(dead\inner)"));
}

TEST_CASE("subkeys that are made faster than they can be deleted do not hold the deletion for ever") {
    const Watched watched("dead", {R"(dead\new)"});
    Watcher::everNew = true;
    const CSkippedSleeps time;
    const CountGuard guard;
    CHECK(DeleteBelow(watched.scratch, "dead") != ERROR_SUCCESS);
    CHECK(time.Taken() < 20'000);
    CHECK(Watcher::left > 0);
    CHECK(ExistsBelow(watched.scratch, "dead"));
}

TEST_CASE("a subkey that comes back with something in it for ever holds the deletion for ten seconds") {
    for (const char* inside : {R"(\inner)", R"(\INNER)", R"(\inner#)", R"(\inner#\a\b)"}) {
        CAPTURE(std::string(inside));
        const Watched watched("dead", {R"(dead\again\inner)", R"(dead\again\more)"});
        Watcher::inside = inside;
        const CSkippedSleeps time;
        CHECK(DeleteBelow(watched.scratch, "dead") != ERROR_SUCCESS);
        CHECK(time.Taken() >= 10'000);
        CHECK(time.Taken() < 15'000);
    }
}

TEST_CASE("ever new subkeys, each with something in it, do not hold the deletion for ever") {
    const Watched watched("dead", {R"(dead\new)"});
    Watcher::everNew = true;
    Watcher::inside = R"(\inner)";
    const CSkippedSleeps time;
    CHECK(DeleteBelow(watched.scratch, "dead") != ERROR_SUCCESS);
    CHECK(Watcher::left > 0);
}

TEST_CASE("a subkey that comes back once, with more in it than there was, is deleted at once") {
    const Watched watched("dead", {R"(dead\again)", R"(dead\z)"});
    Watcher::left = 1;
    Watcher::inside = R"(\a\b\c)";
    const DWORD start = ::GetTickCount();
    CHECK(DeleteBelow(watched.scratch, "dead") == ERROR_SUCCESS);
    CHECK(::GetTickCount() - start < 2'000);
    CHECK_FALSE(ExistsBelow(watched.scratch, "dead"));
}

TEST_CASE("a key with more subkeys than may be made meanwhile goes, one that refuses to be counted too") {
    for (const REGSAM rights : {REGSAM{KEY_ALL_ACCESS}, kDeletionAccess}) {
        CUniqueKey key;
        CScratchKey scratch;
        MakeKey(scratch.Get(), "dead");
        REQUIRE(::RegOpenKeyExA(scratch.Get(), "dead", 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS);
        for (int count = 0; count < 1100; ++count) MakeKey(key.Get(), "sub" + std::to_string(count));
        scratch.Restrict(key.Get(), rights);
        CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
        CHECK_FALSE(ExistsBelow(scratch, "dead"));
    }
}

TEST_CASE("a subkey that becomes deletable after a second is deleted, before any that stands behind it") {
    CScratchKey scratch;
    for (const char* name : {R"(d\a)", R"(d\b)", R"(d\c)"}) scratch.Add(name);
    const CCallHook hook("RegDeleteKeyA", Address(&Guard::Delete));
    Guard::before = hook.Before();
    Guard::tries.clear();
    Guard::patience = 1000;
    Guard::start = ::GetTickCount();
    CHECK(DeleteBelow(scratch, "d") == ERROR_SUCCESS);
    const DWORD taken = ::GetTickCount() - Guard::start;
    CHECK(taken >= 1000);
    CHECK(taken < 5000);
    CHECK_FALSE(ExistsBelow(scratch, "d"));
    CHECK(Guard::tries.starts_with("abb"));
    CHECK(Guard::tries.ends_with("bcd"));
    CHECK(Guard::tries.find_first_not_of('b', 1) == Guard::tries.size() - 2);
}

TEST_CASE("a subkey's own failure to be listed is not looked at: the subkey is tried again") {
    CScratchKey scratch;
    for (const char* name : {R"(dead\a\x)", R"(dead\b)"}) scratch.Add(name);
    const CCallHook hook("RegEnumKeyExA", Address(&Enumerations::Next));
    Enumerations::before = hook.Before();
    Enumerations::toFailure = 1;  // the first is that of the key itself
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK(Enumerations::toFailure < 0);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
}

TEST_CASE("a key whose listing fails half-way stays, and every key that was opened is closed") {
    CScratchKey scratch;
    for (const char* name : {R"(dead\a)", R"(dead\b)"}) scratch.Add(name);
    CHECK(DeleteBelow(scratch, "absent") == ERROR_FILE_NOT_FOUND);  // what the system opens once is open now
    const std::size_t handles = OwnHandles().size();
    const CCallHook hook("RegEnumKeyExA", Address(&Enumerations::Next));
    Enumerations::before = hook.Before();
    Enumerations::toFailure = 2;  // behind the key's first and the first subkey's
    CHECK(DeleteBelow(scratch, "dead") == ERROR_NO_SYSTEM_RESOURCES);
    CHECK(OwnHandles().size() == handles);
    CHECK_FALSE(ExistsBelow(scratch, R"(dead\a)"));
    CHECK(ExistsBelow(scratch, R"(dead\b)"));
}
