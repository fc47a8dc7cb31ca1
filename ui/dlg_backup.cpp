#include "ui/dlg_backup.h"

#include <commctrl.h>

#include "resources/resource.h"

namespace {

constexpr UINT kTimerPeriod = 100;  // milliseconds
constexpr int kHivesRange = 440;
constexpr int kHivesStep = 40;

}  // namespace

CDlgBackup& BackupDialog() {
    static CDlgBackup dialog;
    return dialog;
}

CDlgBackup::CDlgBackup() : CDlgHiveProgress(IDD_BACKUP, IDC_BACKUP_PROGRESS, kTimerPeriod) {}

bool CDlgBackup::OnInitDialog() {
    const HWND bar = GetDlgItem(IDC_HIVES_PROGRESS);
    ::SendMessageA(bar, PBM_SETRANGE, 0, MAKELPARAM(0, kHivesRange));
    ::SendMessageA(bar, PBM_SETSTEP, kHivesStep, 0);
    m_hivesBar = bar;
    return CDlgHiveProgress::OnInitDialog();
}

LRESULT CDlgBackup::OnDestroy(WPARAM, LPARAM) {
    m_hivesBar = nullptr;
    return Default();
}

void CDlgBackup::StepHives() const {
    const HWND bar = m_hivesBar;
    if (bar != nullptr) ::SendMessageA(bar, PBM_STEPIT, 0, 0);
}

std::span<const MessageRow> CDlgBackup::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_TIMER, Handle<&CDlgBackup::OnTimer>},
        {WM_SETCURSOR, Handle<&CDlgBackup::OnSetCursor>},
        {WM_DESTROY, Handle<&CDlgBackup::OnDestroy>},
    };
    return kRows;
}
