#include "framework/list_ctrl.h"

#include <commctrl.h>

#include <vector>

namespace {

constexpr int kLongestText = 1 << 16;

/// The control counts check states as images: 1 is an empty box, 2 a ticked one.
constexpr UINT CheckState(bool check) { return static_cast<UINT>(check ? 2 : 1) << 12; }

}  // namespace

LRESULT CListCtrl::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageA(ListWindow(), message, wParam, lParam);
}

void CListCtrl::InsertColumn(int index, const char* heading, int width) {
    LVCOLUMNA column{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    column.cx = width;
    column.pszText = const_cast<char*>(heading);
    column.iSubItem = index;
    Send(LVM_INSERTCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void CListCtrl::SetExtendedStyle(DWORD style) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

int CListCtrl::GetItemCount() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }

void CListCtrl::DeleteAllItems() { Send(LVM_DELETEALLITEMS); }

void CListCtrl::DeleteItem(int row) { Send(LVM_DELETEITEM, static_cast<WPARAM>(row)); }

int CListCtrl::InsertItem(int index, const char* text) {
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = const_cast<char*>(text);
    return static_cast<int>(Send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
}

void CListCtrl::SetItemText(int row, int column, const char* text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text);
    Send(LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

std::string CListCtrl::GetItemText(int row, int column) const {
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

bool CListCtrl::GetCheck(int row) const {
    return Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK) == CheckState(true);
}

void CListCtrl::SetCheck(int row, bool check) {
    LVITEMA item{};
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = CheckState(check);
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int CListCtrl::GetNextItem(int start, UINT flags) const {
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(start), MAKELPARAM(flags, 0)));
}

int CListCtrl::GetSelectedCount() const { return static_cast<int>(Send(LVM_GETSELECTEDCOUNT)); }

int CListCtrl::GetSelectionMark() const { return static_cast<int>(Send(LVM_GETSELECTIONMARK)); }

void CListCtrl::SetRedraw(bool redraw) { Send(WM_SETREDRAW, redraw ? TRUE : FALSE); }
