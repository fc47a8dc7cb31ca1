#pragma once

#include <windows.h>

class CListView;

/// Rows go into the list at once, but drawing a visible list for each would cost a thousand times the
/// insertion. A batch keeps the list from drawing from the first row on, and shows what has come several
/// times a second.
class CRowBatch {
public:
    explicit CRowBatch(CListView& list) : m_list(list) {}

    /// Call before a row is added.
    void Open();
    /// Shows the rows of the open batch, if it has been open long enough.
    void ShowIfDue();
    /// Shows them at once. Does nothing when no batch is open.
    void Show();

    /// The list's timer that ends a batch when no further row comes.
    static constexpr UINT_PTR kTimer = 2;

private:
    CListView& m_list;
    bool m_isOpen = false;
    DWORD m_openedAt = 0;  // milliseconds of the system's tick count
};
