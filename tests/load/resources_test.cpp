#include "tests/load/resources.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <vector>

// What shows that nothing is left behind must itself see what is.

TEST_CASE("each kind of object that is made is counted, and not counted once it is gone" *
          doctest::test_suite("smoke")) {
    const Resources before = Resources::OfThisProcess();
    constexpr std::size_t kCount = 20;
    std::vector<HANDLE> events;
    std::vector<HBRUSH> brushes;
    std::vector<HMENU> menus;
    std::vector<HICON> icons;
    std::vector<HWND> windows;
    std::vector<void*> blocks;
    const std::vector<BYTE> bits(32, 0);
    for (std::size_t index = 0; index < kCount; ++index) {
        events.push_back(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
        brushes.push_back(::CreateSolidBrush(RGB(1, 2, 3)));
        menus.push_back(::CreateMenu());
        icons.push_back(::CreateIcon(nullptr, 16, 16, 1, 1, bits.data(), bits.data()));
        windows.push_back(
            ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr));
        blocks.push_back(::HeapAlloc(::GetProcessHeap(), 0, 10'000));
    }
    const Resources during = Resources::OfThisProcess();
    CHECK(during.handles >= before.handles + kCount);
    CHECK(during.gdiObjects >= before.gdiObjects + kCount);
    CHECK(during.menus == before.menus + kCount);
    CHECK(during.icons == before.icons + kCount);
    CHECK(during.windows >= before.windows + kCount);
    CHECK(during.heapBytes >= before.heapBytes + kCount * 10'000);

    for (std::size_t index = 0; index < kCount; ++index) {
        ::CloseHandle(events[index]);
        ::DeleteObject(brushes[index]);
        ::DestroyMenu(menus[index]);
        ::DestroyIcon(icons[index]);
        ::DestroyWindow(windows[index]);
        ::HeapFree(::GetProcessHeap(), 0, blocks[index]);
    }
    const Resources after = Resources::OfThisProcess();
    CHECK(after.handles < before.handles + kCount);
    CHECK(after.gdiObjects < before.gdiObjects + kCount);
    CHECK(after.menus == before.menus);
    CHECK(after.icons == before.icons);
    CHECK(after.windows < before.windows + kCount);
    CHECK(after.heapBytes < before.heapBytes + kCount * 10'000);
}
