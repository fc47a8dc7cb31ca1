#include "tests/driver/remote_list.h"

#include <commctrl.h>

#include "tests/driver/wait.h"
#include "tests/driver/window_access.h"

namespace {

// A structure at the start, the text that it points to behind it.
constexpr std::size_t kTextOffset = 256;
constexpr std::size_t kTextBytes = 8192;

constexpr UINT kEmptyBox = 1 << 12;  // the control counts check states as images
constexpr UINT kTickedBox = 2 << 12;

}  // namespace

CRemoteList::CRemoteList(HANDLE process, HWND list)
    : m_list(list), m_memory(process, kTextOffset + kTextBytes) {}

DWORD CRemoteList::ExtendedStyle() const {
    return static_cast<DWORD>(Ask(m_list, LVM_GETEXTENDEDLISTVIEWSTYLE));
}

std::string CRemoteList::ReadText() const {
    std::string text(kTextBytes, '\0');
    m_memory.ReadBytes(kTextOffset, text.data(), text.size());
    const std::size_t end = text.find('\0');
    if (end == std::string::npos || end + 1 == text.size())
        throw CDriverError("a text of the list is too long to be read");
    return text.substr(0, end);
}

std::vector<ListColumn> CRemoteList::Columns() const {
    const auto header = reinterpret_cast<HWND>(Ask(m_list, LVM_GETHEADER));
    const LRESULT count = Ask(header, HDM_GETITEMCOUNT);
    std::vector<ListColumn> columns;
    for (LRESULT index = 0; index < count; ++index) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = reinterpret_cast<char*>(m_memory.Address(kTextOffset));
        column.cchTextMax = kTextBytes;
        m_memory.Write(column);
        if (Ask(m_list, LVM_GETCOLUMNA, static_cast<WPARAM>(index), m_memory.Address()) == FALSE)
            throw CDriverError("the list does not tell its column " + std::to_string(index));
        column = m_memory.Read<LVCOLUMNA>();
        columns.push_back({ReadText(), column.cx, column.fmt & LVCFMT_JUSTIFYMASK});
    }
    return columns;
}

int CRemoteList::Count() const { return static_cast<int>(Ask(m_list, LVM_GETITEMCOUNT)); }

std::string CRemoteList::Cell(int row, int column) const {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = reinterpret_cast<char*>(m_memory.Address(kTextOffset));
    item.cchTextMax = kTextBytes;
    m_memory.Write(item);
    m_memory.Write('\0', kTextOffset);
    Ask(m_list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), m_memory.Address());
    return ReadText();
}

ListRow CRemoteList::RowAt(int row) const { return {Cell(row, 0), Cell(row, 1), Cell(row, 2), Cell(row, 3)}; }

std::vector<ListRow> CRemoteList::Rows() const {
    std::vector<ListRow> rows;
    const int count = Count();
    for (int row = 0; row < count; ++row) rows.push_back(RowAt(row));
    return rows;
}

UINT CRemoteList::State(int row, UINT mask) const {
    return static_cast<UINT>(
        Ask(m_list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), static_cast<LPARAM>(mask)));
}

void CRemoteList::SetState(int row, UINT mask, UINT state) const {
    LVITEMA item{};
    item.stateMask = mask;
    item.state = state;
    m_memory.Write(item);
    Ask(m_list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), m_memory.Address());
}

int CRemoteList::NextRow(int start, UINT flags) const {
    return static_cast<int>(Ask(m_list, LVM_GETNEXTITEM, static_cast<WPARAM>(start), MAKELPARAM(flags, 0)));
}

bool CRemoteList::IsChecked(int row) const { return State(row, LVIS_STATEIMAGEMASK) == kTickedBox; }

std::vector<int> CRemoteList::CheckedRows() const {
    std::vector<int> rows;
    const int count = Count();
    for (int row = 0; row < count; ++row)
        if (IsChecked(row)) rows.push_back(row);
    return rows;
}

std::vector<int> CRemoteList::SelectedRows() const {
    std::vector<int> rows;
    for (int row = NextRow(-1, LVNI_SELECTED); row != -1; row = NextRow(row, LVNI_SELECTED))
        rows.push_back(row);
    return rows;
}

int CRemoteList::FocusedRow() const { return NextRow(-1, LVNI_FOCUSED); }

int CRemoteList::SelectionMark() const { return static_cast<int>(Ask(m_list, LVM_GETSELECTIONMARK)); }

void CRemoteList::Check(int row, bool check) const {
    SetState(row, LVIS_STATEIMAGEMASK, check ? kTickedBox : kEmptyBox);
}

void CRemoteList::Select(const std::vector<int>& rows) const {
    SetState(-1, LVIS_SELECTED, 0);
    for (const int row : rows) SetState(row, LVIS_SELECTED, LVIS_SELECTED);
}

void CRemoteList::Focus(int row) const {
    // Taken from the row that has it: not every version of the control takes it from all rows at once.
    const int focused = FocusedRow();
    if (focused != -1) SetState(focused, LVIS_FOCUSED, 0);
    if (row != -1) SetState(row, LVIS_FOCUSED, LVIS_FOCUSED);
}

void CRemoteList::SetSelectionMark(int row) const { Ask(m_list, LVM_SETSELECTIONMARK, 0, row); }

RECT CRemoteList::CellRect(int row, int column) const {
    RECT rect{};
    rect.left = LVIR_LABEL;
    rect.top = column;
    m_memory.Write(rect);
    if (Ask(m_list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), m_memory.Address()) == FALSE)
        throw CDriverError("the list does not tell where row " + std::to_string(row) + " lies");
    return m_memory.Read<RECT>();
}
