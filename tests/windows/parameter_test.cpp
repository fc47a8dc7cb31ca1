#include "analysis/parameter.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <memory>
#include <type_traits>
#include <vector>

#include "tests/support/native_calls.h"

TEST_CASE("a stage's parameter owns one unnamed manual-reset event, not signalled, and closes it") {
    static_assert(std::has_virtual_destructor_v<CParameter>);
    const std::vector<HANDLE> before = OwnHandles();
    auto parameter = std::make_unique<CParameter>();
    const std::vector<HANDLE> with = OwnHandles();
    std::vector<HANDLE> added;
    for (HANDLE handle : with)
        if (std::find(before.begin(), before.end(), handle) == before.end()) added.push_back(handle);
    REQUIRE(added.size() == 1);
    CHECK((HandleType(added[0]) == L"Event"));
    CHECK(HandleName(added[0]).empty());
    CHECK(::WaitForSingleObject(added[0], 0) == WAIT_TIMEOUT);
    ::SetEvent(added[0]);
    CHECK(::WaitForSingleObject(added[0], 0) == WAIT_OBJECT_0);
    CHECK(::WaitForSingleObject(added[0], 0) == WAIT_OBJECT_0);
    parameter.reset();
    CHECK(OwnHandles().size() == before.size());
}
