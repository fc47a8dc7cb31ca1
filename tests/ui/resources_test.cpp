#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/owners.h"
#include "platform/text.h"
#include "tests/ui/shell.h"

namespace {

struct Item {
    const char* text;  // null: separator
    UINT id;
};

void CheckPopup(HMENU popup, const std::vector<Item>& items) {
    REQUIRE(::GetMenuItemCount(popup) == static_cast<int>(items.size()));
    for (int position = 0; position < static_cast<int>(items.size()); ++position) {
        const Item& item = items[static_cast<std::size_t>(position)];
        char text[128] = "";
        ::GetMenuStringA(popup, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
        CAPTURE(position);
        CHECK(std::string(text) == (item.text != nullptr ? item.text : ""));
        if (item.text != nullptr) CHECK(::GetMenuItemID(popup, position) == item.id);
        const UINT state = ::GetMenuState(popup, static_cast<UINT>(position), MF_BYPOSITION);
        CHECK(((state & MF_SEPARATOR) != 0) == (item.text == nullptr));
    }
}

std::string PopupTitle(HMENU menu, UINT position) {
    char text[128] = "";
    ::GetMenuStringA(menu, position, text, sizeof text, MF_BYPOSITION);
    return text;
}

CUniqueMenu LoadResourceMenu(UINT id) {
    return CUniqueMenu(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id)));
}

INT_PTR CALLBACK IgnoreAll(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

}  // namespace

TEST_CASE("the main menu has four popups with their items in order") {
    const CUniqueMenu menu = LoadResourceMenu(128);
    REQUIRE(::GetMenuItemCount(menu.Get()) == 4);
    CHECK(PopupTitle(menu.Get(), 0) == "&Clean");
    CheckPopup(::GetSubMenu(menu.Get(), 0), {{"&Analyze...", 32828},
                                             {nullptr, 0},
                                             {"Clea&n", 32807},
                                             {"Un&do...", 32830},
                                             {nullptr, 0},
                                             {"E&xit", 57665}});
    CHECK(PopupTitle(menu.Get(), 1) == "&View");
    CheckPopup(::GetSubMenu(menu.Get(), 1), {{"Chec&k", 32827},
                                             {"CheckA&ll", 32825},
                                             {"&Uncheck", 32826},
                                             {nullptr, 0},
                                             {"&Toolbar", 59392},
                                             {"&Status Bar", 59393}});
    CHECK(PopupTitle(menu.Get(), 2) == "&Registry");
    CheckPopup(::GetSubMenu(menu.Get(), 2),
               {{"Co&mpact...", 32835}, {nullptr, 0}, {"Backu&p", 32836}, {"Rest&ore", 32837}});
    CHECK(PopupTitle(menu.Get(), 3) == "&Help");
    CheckPopup(::GetSubMenu(menu.Get(), 3), {{"Con&tent", 32823}, {"A&bout Vellumor...", 57664}});
}

TEST_CASE("the context menu has the popup PopMenu with four items") {
    const CUniqueMenu menu = LoadResourceMenu(172);
    CHECK(PopupTitle(menu.Get(), 0) == "PopMenu");
    CheckPopup(
        ::GetSubMenu(menu.Get(), 0),
        {{"Chec&k", 32827}, {"CheckA&ll", 32825}, {"&Uncheck", 32826}, {"Open in Registry &Editor", 32839}});
}

TEST_CASE("every command has its prompt and tooltip, and the standard strings stand by their numbers") {
    const struct {
        UINT id;
        const char* text;
    } rows[] = {
        {128, "Vellumor v4.55\n\n\n\n\n\n"},
        {57344, "Vellumor v4.55"},
        {32807, "Clean the checked invalid registry entries\nClean"},
        {32823, "Displays online help documentation\nContent"},
        {32825, "Check all entries in the invalid registry list\nCheckAll"},
        {32826, "Uncheck checked entries in the invalid registry list\nUncheck"},
        {32827, "Check selected entries in the invalid registry list\nCheck"},
        {32828, "Analyze invalid entries in the registry\nAnalyze"},
        {32830, "Undo the repairs of invalid registry entries\n&Undo"},
        {32831, "Compact the registry\nCompact"},
        {32833, "Backup the registry\nBackup"},
        {32834, "Restore the registry backup\nRestore"},
        {32835, "Compact the registry\nCompact"},
        {32836, "Backup the registry\nBackup"},
        {32837, "Restore the registry backup\nRestore"},
        {57664, "Display application information\nAbout"},
        {57665, "Exit the application\nExit"},
        {59392, "Show or hide the toolbar\nToggle ToolBar"},
        {59393, "Show or hide the status bar\nToggle StatusBar"},
        {59136, "EXT"},
        {59137, "CAP"},
        {59138, "NUM"},
        {59139, "SCRL"},
        {59140, "OVR"},
        {59141, "REC"},
        {0xEF00, "Change the window size"},
        {0xEF01, "Change the window position"},
        {0xEF02, "Reduce the window to an icon"},
        {0xEF03, "Enlarge the window to full size"},
        {0xEF12, "Restore the window to normal size"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.id);
        CHECK(LoadText(row.id) == row.text);
    }
}

TEST_CASE("the analysis dialog has its controls where they belong") {
    struct Control {
        int id;
        const char* kind;
        const char* text;
        RECT place;  // dialog units: left, top, width, height
    };
    const Control controls[] = {
        {1013, "Static", "Analyzing the invalid registry entries. Please wait...", {7, 7, 244, 9}},
        {-1, "Button", "Last invalid registry key:", {7, 21, 244, 45}},
        {1010, "Edit", "", {9, 32, 238, 32}},
        {-1, "Button", "Current registry key:", {7, 70, 244, 45}},
        {1011, "Edit", "", {9, 81, 238, 32}},
        {1039, "msctls_progress32", "", {7, 122, 244, 7}},
        {2, "Button", "Cancel", {103, 139, 50, 14}},
    };
    const HWND dialog =
        ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(101), nullptr, &IgnoreAll, 0);
    REQUIRE(dialog != nullptr);
    CHECK(WindowText(dialog).empty());
    CHECK((::GetWindowLongA(dialog, GWL_STYLE) & DS_MODALFRAME) != 0);

    HWND child = ::GetWindow(dialog, GW_CHILD);
    for (const Control& control : controls) {
        CAPTURE(control.text);
        CAPTURE(control.id);
        REQUIRE(child != nullptr);
        char kind[64] = "";
        ::GetClassNameA(child, kind, sizeof kind);
        CHECK(::lstrcmpiA(kind, control.kind) == 0);
        CHECK(static_cast<short>(::GetDlgCtrlID(child)) == control.id);
        CHECK(WindowText(child) == control.text);
        RECT corner{control.place.left, control.place.top, 0, 0};
        RECT size{0, 0, control.place.right, control.place.bottom};
        ::MapDialogRect(dialog, &corner);
        ::MapDialogRect(dialog, &size);  // apart from the corner, as the system does it: the rounding differs
        RECT place;
        ::GetWindowRect(child, &place);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        CHECK(place.left == corner.left);
        CHECK(place.top == corner.top);
        CHECK(place.right - place.left == size.right);
        CHECK(place.bottom - place.top == size.bottom);
        child = ::GetWindow(child, GW_HWNDNEXT);
    }
    CHECK(child == nullptr);
    for (const int edit : {1010, 1011}) {
        const LONG style = ::GetWindowLongA(::GetDlgItem(dialog, edit), GWL_STYLE);
        CHECK((style & ES_MULTILINE) != 0);
        CHECK((style & ES_READONLY) != 0);
    }
    CHECK(LOWORD(::SendMessageA(dialog, DM_GETDEFID, 0, 0)) == IDCANCEL);
    ::DestroyWindow(dialog);
}

TEST_CASE("the file tells what it is and its version") {
    const HRSRC found = ::FindResourceA(nullptr, MAKEINTRESOURCEA(1), RT_VERSION);
    REQUIRE(found != nullptr);
    const auto* bytes = static_cast<const char*>(::LockResource(::LoadResource(nullptr, found)));
    const std::string block(bytes, ::SizeofResource(nullptr, found));
    // Names and texts stand in it as UTF-16.
    const auto holds = [&block](const std::string& text) {
        std::string wide;
        for (const char c : text) wide += std::string{c, '\0'};
        return block.find(wide) != std::string::npos;
    };
    for (const char* text :
         {"ProductName", "Vellumor registry cleaner", "FileVersion", "4.55", "vellumor.exe"})
        CHECK(holds(text));
    VS_FIXEDFILEINFO fixed{};
    const std::size_t signature = block.find("\xBD\x04\xEF\xFE");
    REQUIRE(signature != std::string::npos);
    REQUIRE(block.size() >= signature + sizeof fixed);
    block.copy(reinterpret_cast<char*>(&fixed), sizeof fixed, signature);
    CHECK(fixed.dwFileVersionMS == MAKELONG(55, 4));
    CHECK(fixed.dwProductVersionMS == MAKELONG(55, 4));
    CHECK(fixed.dwFileType == VFT_APP);
}
