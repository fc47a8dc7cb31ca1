#include <doctest/doctest.h>

#include <set>

#include "app/vellumor_doc.h"
#include "platform/program_folder.h"
#include "tests/ui/shell.h"

namespace {

constexpr UINT kToolBarOrder[] = {32828, 32827, 32825, 32826, 32807, 32830,
                                  32835, 32836, 32837, 32823, 57664};

/// Opens a popup the way a click does, as far as the frame can tell, and gives its items' states.
UINT ItemState(const CShell& shell, int popupIndex, UINT id) {
    const HMENU popup = ::GetSubMenu(::GetMenu(shell.FrameWindow()), popupIndex);
    ::SendMessageA(shell.FrameWindow(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
                   MAKELPARAM(popupIndex, FALSE));
    return ::GetMenuState(popup, id, MF_BYCOMMAND);
}

bool IsButtonEnabled(const CShell& shell, UINT id) {
    return ::SendMessageA(shell.ToolBar(), TB_ISBUTTONENABLED, id, 0) != 0;
}

RECT PlaceInFrame(const CShell& shell, HWND child) {
    RECT place;
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, shell.FrameWindow(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

}  // namespace

TEST_CASE("the caption is the template's title, whatever the document calls itself") {
    CShell shell;
    CHECK(WindowText(shell.FrameWindow()) == "Vellumor v4.55");
    CVellumorDoc document;
    document.SetTitle("anything");
    CHECK(document.GetTitle() == "Vellumor v4.40");
}

TEST_CASE("a frame that adds the document's title shows both") {
    class CPlainFrame : public CFrameWnd {};
    CSingleDocTemplate plain(128, &MakeRuntime<CDocument, CVellumorDoc>, &MakeRuntime<CFrameWnd, CPlainFrame>,
                             &MakeRuntime<CView, CVellumorView>);
    REQUIRE(plain.OpenNewDocument());
    CHECK(WindowText(plain.Frame()->GetSafeHwnd()) == "Vellumor v4.40 - Vellumor v4.55");
    CHECK(plain.Document()->GetTitle() == "Vellumor v4.40");
    ::DestroyWindow(plain.Frame()->GetSafeHwnd());
    PumpMessages();
}

TEST_CASE("a frame whose bars cannot be made is not created") {
    class CFailingFrame : public CFrameWnd {
        [[nodiscard]] bool OnCreate() override { return false; }
    };
    CSingleDocTemplate failing(128, &MakeRuntime<CDocument, CVellumorDoc>,
                               &MakeRuntime<CFrameWnd, CFailingFrame>, &MakeRuntime<CView, CVellumorView>);
    CHECK_FALSE(failing.OpenNewDocument());
    CHECK(failing.Frame() == nullptr);
    PumpMessages();
}

TEST_CASE("the window is shown in the middle of the work area") {
    CShell shell;
    CHECK(::IsWindowVisible(shell.FrameWindow()) != FALSE);
    RECT work;
    RECT window;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    ::GetWindowRect(shell.FrameWindow(), &window);
    CHECK((window.left - work.left) - (work.right - window.right) <= 1);
    CHECK((window.left - work.left) - (work.right - window.right) >= -1);
    CHECK((window.top - work.top) - (work.bottom - window.bottom) <= 1);
    CHECK((window.top - work.top) - (work.bottom - window.bottom) >= -1);
}

TEST_CASE("the toolbar has eleven 48-pixel flat buttons in order, with three picture lists") {
    CShell shell;
    const HWND bar = shell.ToolBar();
    REQUIRE(::SendMessageA(bar, TB_BUTTONCOUNT, 0, 0) == 11);
    for (int index = 0; index < 11; ++index) {
        TBBUTTON button{};
        ::SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        CHECK(button.idCommand == static_cast<int>(kToolBarOrder[index]));
        CHECK(button.iBitmap == index);
    }
    CHECK((::SendMessageA(bar, TB_GETSTYLE, 0, 0) & TBSTYLE_FLAT) != 0);
    CHECK((::SendMessageA(bar, TB_GETSTYLE, 0, 0) & TBSTYLE_TOOLTIPS) != 0);
    std::set<HIMAGELIST> lists;
    for (const UINT message : {TB_GETIMAGELIST, TB_GETDISABLEDIMAGELIST, TB_GETHOTIMAGELIST}) {
        const auto images = reinterpret_cast<HIMAGELIST>(::SendMessageA(bar, message, 0, 0));
        REQUIRE(images != nullptr);
        int width = 0;
        int height = 0;
        ::ImageList_GetIconSize(images, &width, &height);
        CHECK(width == 48);
        CHECK(height == 48);
        CHECK(::ImageList_GetImageCount(images) == 11);
        lists.insert(images);
    }
    CHECK(lists.size() == 3);
}

TEST_CASE("the bars take their borders and the list the rest, at every size") {
    CShell shell;
    for (const int height : {600, 400}) {
        ::SetWindowPos(shell.FrameWindow(), nullptr, 0, 0, 800, height, SWP_NOMOVE | SWP_NOZORDER);
        RECT client;
        ::GetClientRect(shell.FrameWindow(), &client);
        const RECT bar = PlaceInFrame(shell, shell.ToolBar());
        const RECT list = PlaceInFrame(shell, shell.ListWindow());
        const RECT status = PlaceInFrame(shell, shell.StatusBar());
        CHECK(bar.left == 5);
        CHECK(bar.top == 3);
        CHECK(bar.right == client.right - 3);
        CHECK(list.top == bar.bottom + 3);
        CHECK(list.left == 0);
        CHECK(list.right == client.right);
        CHECK(list.bottom == status.top);
        CHECK(status.bottom == client.bottom);
    }
}

TEST_CASE("the view menu hides and shows the bars, and ticks what is shown") {
    CShell shell;
    const RECT before = PlaceInFrame(shell, shell.ListWindow());
    CHECK((ItemState(shell, 1, 59392) & MF_CHECKED) != 0);
    CHECK((ItemState(shell, 1, 59393) & MF_CHECKED) != 0);

    shell.Command(59392);
    CHECK(::IsWindowVisible(shell.ToolBar()) == FALSE);
    CHECK((ItemState(shell, 1, 59392) & MF_CHECKED) == 0);
    CHECK(PlaceInFrame(shell, shell.ListWindow()).top == 0);

    shell.Command(59393);
    CHECK(::IsWindowVisible(shell.StatusBar()) == FALSE);
    RECT client;
    ::GetClientRect(shell.FrameWindow(), &client);
    CHECK(PlaceInFrame(shell, shell.ListWindow()).bottom == client.bottom);

    shell.Command(59392);
    shell.Command(59393);
    const RECT after = PlaceInFrame(shell, shell.ListWindow());
    CHECK(::EqualRect(&before, &after) != FALSE);
}

TEST_CASE("an opening menu greys what cannot run now") {
    CShell shell;
    const auto isGrey = [&shell](int popup, UINT id) {
        return (ItemState(shell, popup, id) & MF_GRAYED) != 0;
    };
    for (const UINT id : {32827u, 32825u, 32826u}) CHECK(isGrey(1, id));
    CHECK(isGrey(0, 32807));
    CHECK_FALSE(isGrey(0, 32828));
    CHECK_FALSE(isGrey(0, 32830));
    for (const UINT id : {32835u, 32836u, 32837u}) CHECK_FALSE(isGrey(2, id));
    CHECK_FALSE(isGrey(0, 57665));
    CHECK_FALSE(isGrey(3, 32823));

    shell.AddRows(1);
    for (const UINT id : {32827u, 32825u, 32826u}) CHECK_FALSE(isGrey(1, id));
    CHECK_FALSE(isGrey(0, 32807));
}

TEST_CASE("when idle, buttons are greyed and enabled as their commands are") {
    CShell shell;
    shell.Frame().OnIdle();
    for (const UINT id : {32827u, 32825u, 32826u, 32807u}) CHECK_FALSE(IsButtonEnabled(shell, id));
    CHECK(IsButtonEnabled(shell, 32828));
    CHECK(IsButtonEnabled(shell, 32830));
    for (const UINT id : {32835u, 32836u, 32837u}) CHECK(IsButtonEnabled(shell, id));
    CHECK(IsButtonEnabled(shell, 32823));
    shell.AddRows(1);
    for (const UINT id : {32827u, 32825u, 32826u, 32807u}) CHECK(IsButtonEnabled(shell, id));
}

TEST_CASE("the status bar has a message pane and the indicators CAP, NUM and SCRL") {
    CShell shell;
    CHECK(::SendMessageA(shell.StatusBar(), SB_GETPARTS, 0, 0) == 4);
    const struct {
        int key;
        int pane;
        const char* text;
    } indicators[] = {{VK_CAPITAL, 1, "CAP"}, {VK_NUMLOCK, 2, "NUM"}, {VK_SCROLL, 3, "SCRL"}};
    for (const auto& indicator : indicators) {
        CAPTURE(indicator.text);
        BYTE keys[256] = {};
        ::SetKeyboardState(keys);
        shell.Frame().OnIdle();
        CHECK(shell.Pane(indicator.pane).empty());
        keys[indicator.key] = 1;
        ::SetKeyboardState(keys);
        shell.Frame().OnIdle();
        CHECK(shell.Pane(indicator.pane) == indicator.text);
        keys[indicator.key] = 0;
        ::SetKeyboardState(keys);
        shell.Frame().OnIdle();
        CHECK(shell.Pane(indicator.pane).empty());
    }
}

TEST_CASE("the message pane shows the prompt of the menu item under the cursor") {
    CShell shell;
    const auto select = [&shell](UINT id, UINT flags, HMENU menu) {
        ::SendMessageA(shell.FrameWindow(), WM_MENUSELECT, MAKEWPARAM(id, flags),
                       reinterpret_cast<LPARAM>(menu));
    };
    const HMENU menu = ::GetMenu(shell.FrameWindow());
    select(32828, 0, menu);
    CHECK(shell.Pane(0) == "Analyze invalid entries in the registry");
    select(0, MF_POPUP, menu);
    CHECK(shell.Pane(0).empty());
    select(SC_MAXIMIZE, MF_SYSMENU, menu);
    CHECK(shell.Pane(0) == "Enlarge the window to full size");
    select(SC_RESTORE, MF_SYSMENU, menu);
    CHECK(shell.Pane(0) == "Restore the window to normal size");
    select(0, 0xFFFF, nullptr);
    CHECK(shell.Pane(0).empty());
}

TEST_CASE("a button under the cursor shows its tooltip, and its prompt while the cursor stays") {
    CShell shell;
    NMTTDISPINFOA info{};
    info.hdr = {::GetDlgItem(shell.FrameWindow(), 59392), 32825, TTN_GETDISPINFOA};
    ::SendMessageA(shell.FrameWindow(), WM_NOTIFY, 32825, reinterpret_cast<LPARAM>(&info));
    CHECK(std::string(info.szText) == "CheckAll");

    NMTBHOTITEM hot{};
    hot.hdr = {shell.ToolBar(), 59392, static_cast<UINT>(TBN_HOTITEMCHANGE)};
    hot.idNew = 32823;
    hot.dwFlags = HICF_MOUSE | HICF_ENTERING;
    ::SendMessageA(shell.FrameWindow(), WM_NOTIFY, 59392, reinterpret_cast<LPARAM>(&hot));
    CHECK(shell.Pane(0) == "Displays online help documentation");
    hot.dwFlags = HICF_MOUSE | HICF_LEAVING;
    ::SendMessageA(shell.FrameWindow(), WM_NOTIFY, 59392, reinterpret_cast<LPARAM>(&hot));
    CHECK(shell.Pane(0).empty());
}

TEST_CASE("the help command opens the help file beside the program") {
    CRecordingActions actions;
    CShell shell;
    shell.Command(32823);
    CHECK(actions.asked == std::vector<std::string>{"help " + ProgramFolder() + "\\VellumorHelp.chm"});
}

TEST_CASE("the exit command closes the window") {
    CShell shell;
    shell.Command(57665);
    CHECK(::IsWindow(shell.FrameWindow()) == FALSE);
}

TEST_CASE("a disabled main window takes no commands and does not close") {
    CRecordingActions actions;
    CShell shell;
    ::EnableWindow(shell.FrameWindow(), FALSE);
    shell.Command(32823);
    ::SendMessageA(shell.FrameWindow(), WM_CLOSE, 0, 0);
    CHECK(actions.asked.empty());
    CHECK(::IsWindow(shell.FrameWindow()) != FALSE);
    ::EnableWindow(shell.FrameWindow(), TRUE);
    shell.Command(32823);
    CHECK(actions.asked.size() == 1);
}

TEST_CASE(
    "the start sweeps the files that a restore replaced, and shows no box of the system's for a lost "
    "medium") {
    CRecordingActions actions;
    const CShell shell;
    CHECK(actions.emptied == std::vector<std::string>{ProgramFolder() + "\\Backup\\System"});
    const UINT mode = ::SetErrorMode(0);
    ::SetErrorMode(mode);
    CHECK((mode & (SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) ==
          (SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX));
}

TEST_CASE("a control's notification is no command") {
    CRecordingActions actions;
    CShell shell;
    const auto notify = [&shell](UINT code) {
        ::SendMessageA(shell.FrameWindow(), WM_COMMAND, MAKEWPARAM(32823, code),
                       reinterpret_cast<LPARAM>(shell.ToolBar()));
    };
    notify(EN_CHANGE);
    CHECK(actions.asked.empty());
    notify(BN_CLICKED);
    CHECK(actions.asked.size() == 1);
}
