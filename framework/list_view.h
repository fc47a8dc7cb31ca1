#pragma once

#include <string>

#include "framework/view.h"

/// A view that is a list control: the control's window is the view's window, and the control keeps all texts
/// and check states.
class CListView : public CView {
public:
    [[nodiscard]] bool CreateView(HWND frame) override;

    void InsertColumn(int index, const char* heading, int width);
    void SetExtendedStyle(DWORD style);
    [[nodiscard]] int GetItemCount() const;
    void DeleteAllItems();
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
    /// Derived views add LVS_ bits before the control is made.
    [[nodiscard]] virtual DWORD ListStyle() const { return 0; }

private:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
};
