#include "analysis/channel.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <type_traits>

TEST_CASE("the messages to the view have their fixed numbers") {
    CHECK(WM_STAGE1_DONE == 0x465);
    CHECK(WM_STAGE2_DONE == 0x466);
    CHECK(WM_STAGE3_DONE == 0x467);
    CHECK(WM_STAGE4_DONE == 0x468);
    CHECK(WM_STAGE5_DONE == 0x469);
    CHECK(WM_STAGE6_DONE == 0x46A);
    CHECK(WM_STAGE7_DONE == 0x46B);
    CHECK(WM_STAGE8_DONE == 0x46C);
    CHECK(WM_STAGE9_DONE == 0x46D);
    CHECK(WM_ANALYZE_DONE == 0x46E);
    CHECK(WM_ANALYZE_ROW == 0x46F);
    CHECK(WM_ANALYZE_PROGRESS == 0x470);
    CHECK(WM_ANALYZE_CANCELED == 0x471);
}

TEST_CASE("the channel is eight slots in a fixed order") {
    constexpr std::size_t kSlot = sizeof(void*);
    static_assert(std::is_standard_layout_v<AnalysisChannel>);
    CHECK(offsetof(AnalysisChannel, pszInvalidKey) == 0 * kSlot);
    CHECK(offsetof(AnalysisChannel, pszValueName) == 1 * kSlot);
    CHECK(offsetof(AnalysisChannel, pszDataReference) == 2 * kSlot);
    CHECK(offsetof(AnalysisChannel, pszWriteTime) == 3 * kSlot);
    CHECK(offsetof(AnalysisChannel, pszCurrentKey) == 4 * kSlot);
    CHECK(offsetof(AnalysisChannel, hLastKeyEdit) == 5 * kSlot);
    CHECK(offsetof(AnalysisChannel, hViewWnd) == 6 * kSlot);
    CHECK(offsetof(AnalysisChannel, hCancelEvent) == 7 * kSlot);
    CHECK(sizeof(AnalysisChannel) == 8 * kSlot);
}
