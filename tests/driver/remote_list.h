#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/driver/remote_memory.h"

/// One row of the result list, column by column.
struct ListRow {
    std::string key;
    std::string writeTime;
    std::string valueName;
    std::string dataReference;

    bool operator==(const ListRow&) const = default;
};

struct ListColumn {
    std::string heading;
    int width = 0;   // pixels
    int format = 0;  // LVCFMT_...

    bool operator==(const ListColumn&) const = default;
};

/// The list view of another program of the same bitness.
class CRemoteList {
public:
    /// @param process  borrowed; opened for memory access, it must outlive this object.
    CRemoteList(HANDLE process, HWND list);

    [[nodiscard]] HWND Window() const { return m_list; }
    [[nodiscard]] DWORD ExtendedStyle() const;
    [[nodiscard]] std::vector<ListColumn> Columns() const;

    [[nodiscard]] int Count() const;
    [[nodiscard]] std::string Cell(int row, int column) const;
    [[nodiscard]] ListRow RowAt(int row) const;
    [[nodiscard]] std::vector<ListRow> Rows() const;

    [[nodiscard]] bool IsChecked(int row) const;
    [[nodiscard]] std::vector<int> CheckedRows() const;
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// @return -1 for none.
    [[nodiscard]] int FocusedRow() const;
    /// @return -1 for none.
    [[nodiscard]] int SelectionMark() const;

    void Check(int row, bool check) const;
    /// Selects exactly these rows.
    void Select(const std::vector<int>& rows) const;
    /// Gives one row the focus; -1 takes it from all.
    void Focus(int row) const;
    void SetSelectionMark(int row) const;

    /// Where a cell lies in the list's client area.
    [[nodiscard]] RECT CellRect(int row, int column) const;

private:
    /// @param row  -1 for all rows.
    void SetState(int row, UINT mask, UINT state) const;
    [[nodiscard]] UINT State(int row, UINT mask) const;
    [[nodiscard]] int NextRow(int start, UINT flags) const;
    [[nodiscard]] std::string ReadText() const;

    HWND m_list;
    CRemoteMemory m_memory;
};
