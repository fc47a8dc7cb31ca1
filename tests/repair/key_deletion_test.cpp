#include "repair/key_deletion.h"

#include <doctest/doctest.h>

#include "registry/key_link.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/call_hook.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

/// Refuses to delete keys of one name, as often as told, and counts the tries.
struct Refusals {
    static inline FARPROC before = nullptr;
    static inline std::string name;
    static inline int left = 0;
    static inline int tries = 0;

    static LSTATUS WINAPI Delete(HKEY parent, LPCSTR subkey) {
        if (name == subkey) {
            ++tries;
            if (left > 0) {
                --left;
                return ERROR_ACCESS_DENIED;
            }
        }
        return reinterpret_cast<decltype(&::RegDeleteKeyA)>(reinterpret_cast<void*>(before))(parent, subkey);
    }
};

/// Puts the refusals in force.
class CRefusedDeletions {
public:
    CRefusedDeletions(const char* name, int times)
        : m_hook("RegDeleteKeyA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Refusals::Delete))) {
        Refusals::before = m_hook.Before();
        Refusals::name = name;
        Refusals::left = times;
        Refusals::tries = 0;
    }

private:
    CCallHook m_hook;
};

}  // namespace

TEST_CASE("a key goes with everything below it, and nothing beside it") {
    CScratchKey scratch;
    for (const char* name : {"dead\\a\\b\\c", "dead\\a\\d", "dead\\e", "deadlier", "alive"})
        scratch.Add(name);
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
    CHECK(ExistsBelow(scratch, "deadlier"));
    CHECK(ExistsBelow(scratch, "alive"));
}

TEST_CASE("deleting a key that is not there tells so") {
    CScratchKey scratch;
    CHECK(DeleteBelow(scratch, "absent") == ERROR_FILE_NOT_FOUND);
}

TEST_CASE("keys that refuse access go too, wherever they are in the tree") {
    CScratchKey scratch;
    const HKEY inner = scratch.Add("dead\\a");
    scratch.Add("dead\\a\\b");
    scratch.Add("dead\\z");
    scratch.Restrict(inner, 0);
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
}

TEST_CASE("a link inside of the tree goes without its target") {
    CScratchKey scratch;
    SetText(scratch.Add("target\\sub"), "v", "x");
    scratch.Add("dead");
    scratch.AddLink("dead\\link", ObjectName(scratch.Add("target")));
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
    CHECK(ValueExists(HKEY_CURRENT_USER, scratch.Subkey() + R"(\target\sub)", "v"));
}

TEST_CASE("a link that leads back to its parent does not catch the deletion") {
    CScratchKey scratch;
    scratch.AddLink("dead\\around", ObjectName(scratch.Add("dead")));
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
}

TEST_CASE("a subkey that cannot be deleted is tried again until it can") {
    CScratchKey scratch;
    for (const char* name : {"dead\\stuck", "dead\\z"}) scratch.Add(name);
    const CRefusedDeletions refusals("stuck", 3);
    CHECK(DeleteBelow(scratch, "dead") == ERROR_SUCCESS);
    CHECK(Refusals::tries == 4);
    CHECK_FALSE(ExistsBelow(scratch, "dead"));
}

TEST_CASE("after ten seconds without a change the deletion ends with the subkey's error") {
    CScratchKey scratch;
    for (const char* name : {"dead\\a", "dead\\b\\stuck", "dead\\z"}) scratch.Add(name);
    const CRefusedDeletions refusals("stuck", 1'000'000);
    const DWORD start = ::GetTickCount();
    CHECK(DeleteBelow(scratch, "dead") == ERROR_ACCESS_DENIED);
    const DWORD taken = ::GetTickCount() - start;
    CHECK(taken >= 10'000);
    CHECK(taken < 15'000);
    CHECK(Refusals::tries > 10);
    CHECK_FALSE(ExistsBelow(scratch, "dead\\a"));
    CHECK(ExistsBelow(scratch, "dead\\b\\stuck"));
    // Subkeys are taken from the first one on, so what stands behind the stuck one is not reached.
    CHECK(ExistsBelow(scratch, "dead\\z"));
}

TEST_CASE("an error other than the end of the subkeys is returned, and the key stays") {
    CScratchKey scratch;
    scratch.Add("dead\\a");
    const CCallHook hook("RegEnumKeyExA",
                         reinterpret_cast<FARPROC>(reinterpret_cast<void*>(
                             +[](HKEY, DWORD, LPSTR, LPDWORD, LPDWORD, LPSTR, LPDWORD,
                                 PFILETIME) -> LSTATUS WINAPI { return ERROR_NO_SYSTEM_RESOURCES; })));
    CHECK(DeleteBelow(scratch, "dead") == ERROR_NO_SYSTEM_RESOURCES);
    CHECK(ExistsBelow(scratch, "dead\\a"));
}

TEST_CASE("a key holds one value only when it has one value and no subkey") {
    CScratchKey scratch;
    CHECK_FALSE(KeyHoldsOneValueOnly(scratch.Get()));
    SetText(scratch.Get(), "a", "x");
    CHECK(KeyHoldsOneValueOnly(scratch.Get()));
    SetText(scratch.Get(), "b", "x");
    CHECK_FALSE(KeyHoldsOneValueOnly(scratch.Get()));
    ::RegDeleteValueA(scratch.Get(), "b");
    scratch.Add("sub");
    CHECK_FALSE(KeyHoldsOneValueOnly(scratch.Get()));
}

TEST_CASE("a key's one value counts, however large") {
    CScratchKey scratch;
    SetBytes(scratch.Get(), std::string(300, 'n'), REG_BINARY, std::string(5000, 'x'));
    CHECK(KeyHoldsOneValueOnly(scratch.Get()));
}

TEST_CASE("deleting the key itself leaves the target of a link alone") {
    CScratchKey scratch;
    SetText(scratch.Add("target"), "v", "x");
    scratch.AddLink("link", ObjectName(scratch.Add("target")));
    CHECK(DeleteKeyItself(scratch.Get(), "link") == ERROR_SUCCESS);
    CHECK_FALSE(ExistsBelow(scratch, "link"));
    CHECK(ExistsBelow(scratch, "target"));
    CHECK(DeleteKeyItself(scratch.Get(), "link") == ERROR_FILE_NOT_FOUND);
    scratch.Add("full\\sub");
    CHECK(DeleteKeyItself(scratch.Get(), "full") != ERROR_SUCCESS);
    CHECK(ExistsBelow(scratch, "full\\sub"));
}

TEST_CASE("a link that may be deleted but not read is not mistaken for a key of its target") {
    CUniqueKey link;
    CScratchKey scratch;
    link = MakeLink(scratch.Get(), "link", ObjectName(scratch.Add("target")));
    scratch.Restrict(link.Get(), DELETE);
    CUniqueKey read;
    REQUIRE(OpenKeyItself(scratch.Get(), "link", KEY_QUERY_VALUE, read) == ERROR_ACCESS_DENIED);
    CHECK(DeleteKeyItself(scratch.Get(), "link") == ERROR_SUCCESS);
    CHECK(OpenKeyItself(scratch.Get(), "link", DELETE, read) == ERROR_FILE_NOT_FOUND);
    CHECK(ExistsBelow(scratch, "target"));
}
