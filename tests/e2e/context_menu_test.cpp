#include <doctest/doctest.h>

#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/app_with_rows.h"

namespace {

constexpr int kItems = 4;

/// Clicks with the mouse, as a user does.
void Click(POINT place) {
    ::SetCursorPos(place.x, place.y);
    ::mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    ::mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

/// Clicks the item at this place, from 0.
void ClickItem(HWND menu, int item) {
    const RECT place = ScreenRect(menu);
    const int height = (place.bottom - place.top) / kItems;
    Click({place.left + 20, place.top + item * height + height / 2});
}

void Press(const CAppDriver& app, WPARAM key) {
    ::PostMessageA(app.List().Window(), WM_KEYDOWN, key, 0);
    ::PostMessageA(app.List().Window(), WM_KEYUP, key, 0);
}

/// Right-clicks a place of the list with the cursor there. @return the popup menu's window.
HWND OpenMenuAt(const CAppDriver& app, POINT place) {
    const LPARAM position = MAKELPARAM(place.x, place.y);
    ::MapWindowPoints(app.List().Window(), nullptr, &place, 1);
    ::SetCursorPos(place.x, place.y);
    ::PostMessageA(app.List().Window(), WM_RBUTTONDOWN, MK_RBUTTON, position);
    ::PostMessageA(app.List().Window(), WM_RBUTTONUP, 0, position);
    return app.WaitForPopupMenu();
}

HWND OpenMenuAtRow(const CAppDriver& app, int row) {
    const RECT cell = app.List().CellRect(row, 1);
    return OpenMenuAt(app, {cell.left + 10, (cell.top + cell.bottom) / 2});
}

/// Chooses the item at this place, from 0, by the keyboard.
void Choose(const CAppDriver& app, int item) {
    Press(app, VK_HOME);
    for (int step = 0; step < item; ++step) Press(app, VK_DOWN);
    Press(app, VK_RETURN);
}

void WaitUntilClosed(HWND menu) {
    WaitFor("the popup menu to close", [menu] { return ::IsWindowVisible(menu) == FALSE; });
}

}  // namespace

TEST_CASE("a right click on a row opens the menu at the cursor") {
    const CAppDriver& app = AppWithRows();
    const HWND menu = OpenMenuAtRow(app, 2);
    TakePicture("context-menu");
    POINT cursor{};
    ::GetCursorPos(&cursor);
    const RECT place = ScreenRect(menu);
    CHECK(std::abs(place.left - cursor.x) <= 4);
    CHECK(std::abs(place.top - cursor.y) <= 4);
    Press(app, VK_ESCAPE);
    WaitUntilClosed(menu);
    app.Settle();
    CHECK(app.List().CheckedRows().empty());
}

TEST_CASE("the menu's first three items are Check, CheckAll and Uncheck") {
    const CAppDriver& app = AppWithRows();
    const int count = app.List().Count();
    const HWND menu = OpenMenuAtRow(app, 2);
    app.List().Select({4});
    Choose(app, 0);
    WaitUntilClosed(menu);
    WaitFor("Check", [&] { return app.List().CheckedRows() == std::vector<int>{4}; });

    const HWND second = OpenMenuAtRow(app, 2);
    ClickItem(second, 1);
    WaitUntilClosed(second);
    WaitFor("CheckAll", [&] { return static_cast<int>(app.List().CheckedRows().size()) == count; });

    const HWND third = OpenMenuAtRow(app, 2);
    Choose(app, 2);
    WaitUntilClosed(third);
    WaitFor("Uncheck", [&] { return app.List().CheckedRows().empty(); });
}

TEST_CASE("without rows no item of the menu can be chosen") {
    const FreshApp app;
    const HWND menu = OpenMenuAt(app, {200, 100});
    TakePicture("context-menu-empty");
    for (int item = 0; item < kItems; ++item) {
        CAPTURE(item);
        ClickItem(menu, item);
        // An item that can be chosen closes the menu.
        CHECK(StaysFalse([menu] { return ::IsWindowVisible(menu) == FALSE; }, 150));
    }
    Press(app, VK_ESCAPE);
    WaitUntilClosed(menu);
}
