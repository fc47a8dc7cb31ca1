#include "platform/unique.h"

#include <doctest/doctest.h>

#include <type_traits>
#include <utility>
#include <vector>

#include "platform/owners.h"
#include "tests/support/native_calls.h"

namespace {

std::vector<int> g_closed;

struct NumberTraits {
    using Type = int;
    static constexpr Type None() { return -1; }
    static void Close(Type number) { g_closed.push_back(number); }
};
using CUniqueNumber = CUnique<NumberTraits>;
using Numbers = std::vector<int>;

}  // namespace

TEST_CASE("an owner closes what it owns exactly once, at its end") {
    g_closed.clear();
    {
        const CUniqueNumber owner(7);
        CHECK(static_cast<bool>(owner));
        CHECK(owner.Get() == 7);
        CHECK(g_closed.empty());
    }
    CHECK(g_closed == Numbers{7});
}

TEST_CASE("an owner of nothing closes nothing, and nothing is what the resource says") {
    g_closed.clear();
    {
        const CUniqueNumber nothing;
        CHECK_FALSE(static_cast<bool>(nothing));
        CHECK(static_cast<bool>(CUniqueNumber(0)));
    }
    CHECK(g_closed == Numbers{0});
}

TEST_CASE("an owner can be moved but not copied, and only the last one closes") {
    static_assert(!std::is_copy_constructible_v<CUniqueNumber> && !std::is_copy_assignable_v<CUniqueNumber>);
    g_closed.clear();
    {
        CUniqueNumber first(1);
        CUniqueNumber second(std::move(first));
        CHECK(second.Get() == 1);
        CUniqueNumber third(3);
        third = std::move(second);
        CHECK(g_closed == Numbers{3});
        CUniqueNumber& same = third;
        third = std::move(same);
        CHECK(third.Get() == 1);
        CHECK(g_closed == Numbers{3});
    }
    CHECK(g_closed == Numbers{3, 1});
}

TEST_CASE("an owner closes the old before a call writes the new, and gives up without closing") {
    g_closed.clear();
    {
        CUniqueNumber owner(1);
        *owner.Receive() = 2;
        CHECK(g_closed == Numbers{1});
        owner.Reset(3);
        CHECK(g_closed == Numbers{1, 2});
        CHECK(owner.Release() == 3);
        CHECK_FALSE(static_cast<bool>(owner));
    }
    CHECK(g_closed == Numbers{1, 2});
}

TEST_CASE("each kind of handle is closed, and its own value for none is left alone") {
    const std::size_t before = OwnHandles().size();
    {
        const CUniqueHandle event(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
        CUniqueKey key;
        CHECK(::RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, key.Receive()) == ERROR_SUCCESS);
        WIN32_FIND_DATAA entry;
        const CUniqueFind search(::FindFirstFileA("C:\\*", &entry));
        const CUniqueFile folder(::CreateFileA("C:\\", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                               OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        CHECK(static_cast<bool>(event));
        CHECK(static_cast<bool>(search));
        CHECK(static_cast<bool>(folder));
        CHECK(OwnHandles().size() >= before + 3);
    }
    CHECK(OwnHandles().size() == before);
    CHECK_FALSE(static_cast<bool>(CUniqueFile(INVALID_HANDLE_VALUE)));
    CHECK_FALSE(static_cast<bool>(CUniqueFind(INVALID_HANDLE_VALUE)));
    CHECK_FALSE(static_cast<bool>(CUniqueHandle(nullptr)));
    CHECK_FALSE(static_cast<bool>(CUniqueKey(nullptr)));
}
