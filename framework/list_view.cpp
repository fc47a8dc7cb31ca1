#include "framework/list_view.h"

#include <commctrl.h>

#include <vector>

namespace {

constexpr int kLongestText = 1 << 16;

/// The control counts check states as images: 1 is an empty box, 2 a ticked one.
constexpr UINT CheckState(bool check) { return static_cast<UINT>(check ? 2 : 1) << 12; }

}  // namespace

bool CListView::CreateView(HWND frame) {
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_SHOWSELALWAYS | ListStyle();
    constexpr UINT_PTR kFirstPane = 0xE900;
    return Create(WC_LISTVIEWA, "", style, WS_EX_CLIENTEDGE, {}, frame, reinterpret_cast<HMENU>(kFirstPane));
}

LRESULT CListView::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageA(GetSafeHwnd(), message, wParam, lParam);
}

void CListView::InsertColumn(int index, const char* heading, int width) {
    LVCOLUMNA column{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    column.cx = width;
    column.pszText = const_cast<char*>(heading);
    column.iSubItem = index;
    Send(LVM_INSERTCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void CListView::SetExtendedStyle(DWORD style) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

int CListView::GetItemCount() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }

void CListView::DeleteAllItems() { Send(LVM_DELETEALLITEMS); }

int CListView::InsertItem(int index, const char* text) {
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = const_cast<char*>(text);
    return static_cast<int>(Send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
}

void CListView::SetItemText(int row, int column, const char* text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text);
    Send(LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

std::string CListView::GetItemText(int row, int column) const {
    std::vector<char> buffer(512);
    for (;;) {
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = buffer.data();
        item.cchTextMax = static_cast<int>(buffer.size());
        const auto length = static_cast<std::size_t>(
            Send(LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
        // A text that fills the buffer may have been cut.
        if (length + 1 < buffer.size() || buffer.size() >= kLongestText) return {item.pszText, length};
        buffer.resize(buffer.size() * 2);
    }
}

bool CListView::GetCheck(int row) const {
    return Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK) == CheckState(true);
}

void CListView::SetCheck(int row, bool check) {
    LVITEMA item{};
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = CheckState(check);
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int CListView::GetNextItem(int start, UINT flags) const {
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(start), MAKELPARAM(flags, 0)));
}

int CListView::GetSelectedCount() const { return static_cast<int>(Send(LVM_GETSELECTEDCOUNT)); }

int CListView::GetSelectionMark() const { return static_cast<int>(Send(LVM_GETSELECTIONMARK)); }

void CListView::SetRedraw(bool redraw) { Send(WM_SETREDRAW, redraw ? TRUE : FALSE); }
