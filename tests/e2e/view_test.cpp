#include <doctest/doctest.h>

#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/program.h"

namespace {

bool IsShown(HWND window) { return ::IsWindowVisible(window) != FALSE; }

RECT PlaceOf(const CAppDriver& app, HWND child) { return RectIn(child, app.Frame()); }

/// Checks that bars and list share the window's client area without gap or overlap.
void CheckLayout(const CAppDriver& app) {
    const RECT client = ClientRect(app.Frame());
    const RECT list = PlaceOf(app, app.List().Window());
    const RECT toolBar = PlaceOf(app, app.ToolBar());
    const RECT statusBar = PlaceOf(app, app.StatusBar());
    CHECK(list.left == 0);
    CHECK(list.right == client.right);
    if (IsShown(app.ToolBar())) {
        CHECK(toolBar.left == 5);
        CHECK(toolBar.top == 3);
        CHECK(toolBar.right == client.right - 3);
        CHECK(list.top == toolBar.bottom + 3);
    } else {
        CHECK(list.top == 0);
    }
    if (IsShown(app.StatusBar())) {
        CHECK(statusBar.left == 0);
        CHECK(statusBar.right == client.right);
        CHECK(statusBar.bottom == client.bottom);
        CHECK(list.bottom == statusBar.top);
    } else {
        CHECK(list.bottom == client.bottom);
    }
}

void Toggle(const CAppDriver& app, unsigned command, HWND bar) {
    const bool wasShown = IsShown(bar);
    app.Post(command);
    app.Settle();
    CHECK(IsShown(bar) != wasShown);
    CheckLayout(app);
}

}  // namespace

TEST_CASE("the list takes the room of a hidden bar and gives it back") {
    const FreshApp app;
    const RECT before = PlaceOf(app, app.List().Window());
    Toggle(app, commands::kToggleToolBar, app.ToolBar());
    Toggle(app, commands::kToggleStatusBar, app.StatusBar());
    TakePicture("without-bars");
    Toggle(app, commands::kToggleToolBar, app.ToolBar());
    Toggle(app, commands::kToggleStatusBar, app.StatusBar());
    const RECT after = PlaceOf(app, app.List().Window());
    CHECK(::EqualRect(&before, &after) != FALSE);
}

TEST_CASE("resizing the window lays out its bars and its list") {
    const FreshApp app;
    for (const SIZE size : {SIZE{700, 500}, SIZE{400, 300}, SIZE{1100, 720}}) {
        CAPTURE(size.cx);
        ::SetWindowPos(app.Frame(), nullptr, 40, 30, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
        app.Settle();
        CheckLayout(app);
    }
    ::PostMessageA(app.Frame(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    app.Settle();
    CHECK(::IsZoomed(app.Frame()) != FALSE);
    CheckLayout(app);
}
