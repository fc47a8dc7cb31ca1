#include "ui/row_batch.h"

#include "framework/list_view.h"

namespace {

constexpr UINT kBatchPeriod = 200;  // milliseconds

}  // namespace

void CRowBatch::Open() {
    if (m_isOpen) return;
    m_isOpen = true;
    m_openedAt = ::GetTickCount();
    m_list.SetRedraw(false);
    ::SetTimer(m_list.GetSafeHwnd(), kTimer, kBatchPeriod, nullptr);
}

void CRowBatch::ShowIfDue() {
    // Timers come last of all messages, so a busy worker could hold them off.
    if (m_isOpen && ::GetTickCount() - m_openedAt >= kBatchPeriod) Show();
}

void CRowBatch::Show() {
    if (!m_isOpen) return;
    m_isOpen = false;
    ::KillTimer(m_list.GetSafeHwnd(), kTimer);
    m_list.SetRedraw(true);
    ::InvalidateRect(m_list.GetSafeHwnd(), nullptr, TRUE);
    ::UpdateWindow(m_list.GetSafeHwnd());
}
