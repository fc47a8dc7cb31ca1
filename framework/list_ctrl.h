#pragma once

#include <windows.h>

#include <string>

/// What a report-style list control can be asked and told, whichever window object its window belongs to.
class CListCtrl {
public:
    CListCtrl() = default;
    CListCtrl(const CListCtrl&) = delete;
    CListCtrl& operator=(const CListCtrl&) = delete;

    void InsertColumn(int index, const char* heading, int width);
    void SetExtendedStyle(DWORD style);
    [[nodiscard]] int GetItemCount() const;
    void DeleteAllItems();
    void DeleteItem(int row);
    /// @return the new row's index, -1 on failure. An index past the end appends.
    int InsertItem(int index, const char* text);
    void SetItemText(int row, int column, const char* text);
    /// A cell's whole text, of whatever length.
    [[nodiscard]] std::string GetItemText(int row, int column) const;
    [[nodiscard]] bool GetCheck(int row) const;
    void SetCheck(int row, bool check);
    /// The next row behind `start` (-1: from the first) in the given LVNI_ state; -1 when there is none.
    [[nodiscard]] int GetNextItem(int start, UINT flags) const;
    [[nodiscard]] int GetSelectedCount() const;
    /// The row that a range selection starts from; -1 for none.
    [[nodiscard]] int GetSelectionMark() const;
    void SetRedraw(bool redraw);

protected:
    ~CListCtrl() = default;
    /// The control's window, borrowed.
    [[nodiscard]] virtual HWND ListWindow() const = 0;

private:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
};

/// A list control among the controls of a dialog.
class CDialogList final : public CListCtrl {
public:
    explicit CDialogList(HWND list) : m_list(list) {}

protected:
    [[nodiscard]] HWND ListWindow() const override { return m_list; }

private:
    HWND m_list;
};
