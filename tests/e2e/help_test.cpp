#include <doctest/doctest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "tests/driver/window_access.h"
#include "tests/e2e/program.h"

namespace {

HWND FindHelpWindow(const CAppDriver& app) {
    const std::vector<HWND> windows = TopWindowsOf(app.ProcessId());
    const auto help = std::ranges::find_if(
        windows, [](HWND window) { return HasClass(window, "HH Parent"); });  // the help viewer's
    return help != windows.end() ? *help : nullptr;
}

HWND FindTree(HWND window) {
    for (const HWND child : ChildrenOf(window)) {
        if (HasClass(child, "SysTreeView32")) return child;
        if (const HWND tree = FindTree(child)) return tree;
    }
    return nullptr;
}

}  // namespace

TEST_CASE("the Content command opens the help beside the program, with its contents") {
    if (::GetFileAttributesA((TestFolder() + "\\VellumorHelp.chm").c_str()) == INVALID_FILE_ATTRIBUTES) {
        MESSAGE("not run: this build has no help, since there was no help compiler");
        return;
    }
    const FreshApp app;
    app.Post(commands::kHelpContent);
    const HWND help = WaitFor("the help window", [&app] { return FindHelpWindow(app); });
    CHECK(TextOf(help) == "Vellumor Help");
    const HWND contents = WaitFor("the help's contents", [help] { return FindTree(help); });
    // Every topic, every part of the checks' description, and every check.
    WaitFor("the filled contents", [contents] { return Ask(contents, TVM_GETCOUNT) > 60; });
    app.PostClose();
    CHECK(app.WaitForExit() == 0);
}
