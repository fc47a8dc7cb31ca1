#include "ui/dlg_analyze.h"

#include <commctrl.h>

#include "resources/resource.h"

namespace {

constexpr int kBarRange = 400;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerPeriod = 200;    // milliseconds
constexpr DWORD kRefreshPeriod = 30;  // milliseconds

}  // namespace

CDlgAnalyze::CDlgAnalyze() : CDialog(IDD_ANALYZE), m_nRange(kBarRange) {}

bool CDlgAnalyze::OnInitDialog() {
    m_nRange = kBarRange;
    m_bStarted = 1;
    ::SendMessageA(GetDlgItem(IDC_ANALYZE_PROGRESS), PBM_SETRANGE, 0, MAKELPARAM(0, m_nRange));
    m_nTimer = ::SetTimer(GetSafeHwnd(), kTimer, kTimerPeriod, nullptr);
    m_shownLastKey.clear();  // the controls of a new dialog are empty
    m_shownCurrentKey.clear();
    Refresh();
    return true;
}

void CDlgAnalyze::OnCancel() {
    Refresh();
    CDialog::OnCancel();
}

LRESULT CDlgAnalyze::OnClose(WPARAM, LPARAM) {
    // Ended here and not by a posted command, so that the dialog has given its owner back before the closing
    // message box takes it.
    OnCancel();
    return 0;
}

LRESULT CDlgAnalyze::OnTimer(WPARAM, LPARAM) {
    Refresh();
    const HWND bar = GetDlgItem(IDC_ANALYZE_PROGRESS);
    if (m_bFinishing == 1) {
        FillBar(bar);
        ::KillTimer(GetSafeHwnd(), m_nTimer);
        OnCancel();
    }
    ::SendMessageA(bar, PBM_STEPIT, 0, 0);
    return Default();
}

void CDlgAnalyze::FillBar(HWND bar) {
    const auto position = static_cast<int>(::SendMessageA(bar, PBM_GETPOS, 0, 0));
    for (int step = position; step < m_nRange; ++step) ::SendMessageA(bar, PBM_STEPIT, 0, 0);
}

bool CDlgAnalyze::IsRefreshDue() const {
    return GetSafeHwnd() != nullptr && ::GetTickCount() - m_refreshedAt >= kRefreshPeriod;
}

void CDlgAnalyze::RefreshSoon() {
    if (IsRefreshDue()) Refresh();
}

void CDlgAnalyze::Refresh() {
    if (GetSafeHwnd() == nullptr) return;
    if (m_shownLastKey != m_strLastKey) {
        m_shownLastKey = m_strLastKey;
        SetDlgItemText(IDC_LAST_KEY, m_shownLastKey);
    }
    if (m_shownCurrentKey != m_strCurrentKey) {
        m_shownCurrentKey = m_strCurrentKey;
        SetDlgItemText(IDC_CURRENT_KEY, m_shownCurrentKey);
    }
    m_refreshedAt = ::GetTickCount();
}

std::span<const MessageRow> CDlgAnalyze::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_TIMER, Handle<&CDlgAnalyze::OnTimer>},
        {WM_CLOSE, Handle<&CDlgAnalyze::OnClose>},
    };
    return kRows;
}
