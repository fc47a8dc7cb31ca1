#include "ui/dlg_hive_progress.h"

#include <commctrl.h>

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr int kBarRange = 400;
constexpr int kBarStep = 10;  // a progress bar's own

}  // namespace

bool CDlgHiveProgress::OnInitDialog() {
    ::SendMessageA(GetDlgItem(m_bar), PBM_SETRANGE, 0, MAKELPARAM(0, kBarRange));
    ::SetTimer(GetSafeHwnd(), kTimer, m_period, nullptr);
    return true;
}

LRESULT CDlgHiveProgress::OnTimer(WPARAM, LPARAM) {
    StepBar();
    const Worker worker = m_worker;
    if (worker == Worker::IsDone) Finish();
    if (worker == Worker::HasGivenUp) End(IDCANCEL);
    return Default();
}

LRESULT CDlgHiveProgress::OnSetCursor(WPARAM, LPARAM) {
    // A dialog of its own accord would show the arrow wherever the mouse moves.
    ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    return TRUE;
}

void CDlgHiveProgress::Finish() {
    if (GetSafeHwnd() == nullptr) return;
    FillBar();
    End(IDOK);
}

void CDlgHiveProgress::End(int result) {
    ::KillTimer(GetSafeHwnd(), kTimer);
    EndDialog(result);
}

void CDlgHiveProgress::StepBar() const { ::SendMessageA(GetDlgItem(m_bar), PBM_STEPIT, 0, 0); }

void CDlgHiveProgress::FillBar() const {
    // Counted, because a bar that is stepped past its end begins anew.
    for (int step = 0; step < kBarRange / kBarStep; ++step) {
        if (::SendMessageA(GetDlgItem(m_bar), PBM_GETPOS, 0, 0) >= kBarRange) return;
        StepBar();
    }
}

std::span<const MessageRow> CDlgHiveProgress::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_TIMER, Handle<&CDlgHiveProgress::OnTimer>},
        {WM_SETCURSOR, Handle<&CDlgHiveProgress::OnSetCursor>},
    };
    return kRows;
}
