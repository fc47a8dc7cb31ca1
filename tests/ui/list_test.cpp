#include <doctest/doctest.h>

#include "tests/ui/shell.h"

namespace {

void Select(const CShell& shell, int row, bool select) {
    LVITEMA item{};
    item.stateMask = LVIS_SELECTED;
    item.state = select ? LVIS_SELECTED : 0;
    ::SendMessageA(shell.ListWindow(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&item));
}

std::vector<int> CheckedRows(const CShell& shell) {
    std::vector<int> rows;
    for (int row = 0; row < shell.View().GetItemCount(); ++row)
        if (shell.View().GetCheck(row)) rows.push_back(row);
    return rows;
}

using Rows = std::vector<int>;

/// The popup menu that is open on this thread's screen.
HMENU OpenPopup() {
    constexpr UINT kGetMenuHandle = 0x01E1;
    const HWND window = ::FindWindowA("#32768", nullptr);
    return reinterpret_cast<HMENU>(::SendMessageA(window, kGetMenuHandle, 0, 0));
}

/// Right-clicks the list and gives each context-menu item's "greyed".
std::vector<bool> ContextMenuGreys(const CShell& shell) {
    std::vector<bool> greys;
    After(300, [&greys] {
        const HMENU popup = OpenPopup();
        for (int position = 0; position < ::GetMenuItemCount(popup); ++position)
            greys.push_back((::GetMenuState(popup, static_cast<UINT>(position), MF_BYPOSITION) & MF_GRAYED) !=
                            0);
        ::EndMenu();
    });
    NMITEMACTIVATE click{};
    click.hdr = {shell.ListWindow(), 0, static_cast<UINT>(NM_RCLICK)};
    ::SendMessageA(shell.FrameWindow(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    return greys;
}

}  // namespace

TEST_CASE("the list is a report with check boxes, grid lines and full-row selection, in four columns") {
    CShell shell;
    CHECK((::GetWindowLongA(shell.ListWindow(), GWL_STYLE) & LVS_TYPEMASK) == LVS_REPORT);
    CHECK(::SendMessageA(shell.ListWindow(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) == 0x25);
    const struct {
        const char* heading;
        int width;
    } columns[] = {{"Questionable Registry Key", 350},
                   {"Write Time", 145},
                   {"Value Name", 125},
                   {"Questionable Data Reference", 405}};
    int index = 0;
    for (const auto& expected : columns) {
        char heading[64] = "";
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = heading;
        column.cchTextMax = sizeof heading;
        REQUIRE(::SendMessageA(shell.ListWindow(), LVM_GETCOLUMNA, static_cast<WPARAM>(index++),
                               reinterpret_cast<LPARAM>(&column)) != 0);
        CHECK(std::string(heading) == expected.heading);
        CHECK(column.cx == expected.width);
        CHECK((column.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_LEFT);
    }
    CHECK(::SendMessageA(reinterpret_cast<HWND>(::SendMessageA(shell.ListWindow(), LVM_GETHEADER, 0, 0)),
                         HDM_GETITEMCOUNT, 0, 0) == 4);
}

TEST_CASE("Check ticks the selected rows and leaves ticked ones ticked") {
    CShell shell;
    shell.AddRows(5);
    shell.View().SetCheck(0, true);
    Select(shell, 2, true);
    Select(shell, 4, true);
    shell.Command(32827);
    CHECK(CheckedRows(shell) == Rows{0, 2, 4});
}

TEST_CASE("Check without a selection does nothing") {
    CShell shell;
    shell.AddRows(2);
    shell.Command(32827);
    CHECK(CheckedRows(shell).empty());
}

TEST_CASE("CheckAll ticks every row, and Uncheck clears all though one is selected") {
    CShell shell;
    shell.AddRows(4);
    shell.Command(32825);
    CHECK(CheckedRows(shell) == Rows{0, 1, 2, 3});
    shell.View().SetCheck(1, false);
    Select(shell, 1, true);
    shell.Command(32826);
    CHECK(CheckedRows(shell).empty());
}

TEST_CASE("Delete runs the Clean command and other keys do not; every key reaches the list") {
    static int cleaned;
    class CProbeView : public CVellumorView {
    public:
        void OnClean() { ++cleaned; }

    protected:
        [[nodiscard]] std::span<const CommandRow> Commands() const override {
            static constexpr CommandRow kRows[] = {{32807, Run<&CProbeView::OnClean>}};
            return kRows;
        }
    };
    CSingleDocTemplate docTemplate(128, &MakeRuntime<CDocument, CDocument>,
                                   &MakeRuntime<CFrameWnd, CFrameWnd>, &MakeRuntime<CView, CProbeView>);
    REQUIRE(docTemplate.OpenNewDocument());
    auto& view = static_cast<CVellumorView&>(*docTemplate.Frame()->ActiveView());
    for (int row = 0; row < 3; ++row) view.InsertItem(row, "row");
    cleaned = 0;
    ::SendMessageA(view.GetSafeHwnd(), WM_KEYDOWN, VK_DELETE, 0);
    CHECK(cleaned == 1);
    ::SendMessageA(view.GetSafeHwnd(), WM_KEYDOWN, VK_BACK, 0);
    CHECK(cleaned == 1);
    ::SendMessageA(view.GetSafeHwnd(), WM_KEYDOWN, VK_END, 0);
    CHECK(view.GetNextItem(-1, LVNI_FOCUSED) == 2);
    ::DestroyWindow(docTemplate.Frame()->GetSafeHwnd());
    PumpMessages();
}

TEST_CASE("the context menu is greyed as a whole while the list is empty") {
    CShell shell;
    CHECK(ContextMenuGreys(shell) == std::vector<bool>{true, true, true, true});
    shell.AddRows(1);
    CHECK(ContextMenuGreys(shell) == std::vector<bool>{false, false, false, false});
}

TEST_CASE("a command chosen in the context menu runs like any other") {
    CShell shell;
    shell.AddRows(2);
    ::SendMessageA(shell.ListWindow(), WM_COMMAND, 32825, 0);
    CHECK(CheckedRows(shell) == Rows{0, 1});
    ::SendMessageA(shell.ListWindow(), WM_COMMAND, 59393, 0);  // unknown to the list, known to the frame
    CHECK(::IsWindowVisible(shell.StatusBar()) == FALSE);
}

TEST_CASE("a cell's text comes back whole, however long") {
    CShell shell;
    const std::string longText(1500, 'k');
    shell.AddRows(1);
    shell.View().SetItemText(0, 2, longText.c_str());
    CHECK(shell.Cell(0, 2) == longText);
}
