// The view's commands on hives: backup, restore and compaction.

#include <memory>
#include <string>

#include "analysis/parameter.h"
#include "framework/wait_cursor.h"
#include "hives/backup_folder.h"
#include "hives/compaction.h"
#include "hives/restore.h"
#include "platform/host_services.h"
#include "ui/dlg_backup.h"
#include "ui/dlg_compact.h"
#include "ui/dlg_compact_summary.h"
#include "ui/dlg_restore.h"
#include "ui/hive_workers.h"
#include "ui/messages.h"
#include "ui/texts.h"
#include "ui/vellumor_view.h"

namespace {

// How long a full bar can be seen before what follows; milliseconds.
constexpr DWORD kBackupPause = 100;
constexpr DWORD kCompactPause = 200;

void ShowArrow() { ::SetCursor(::LoadCursorA(nullptr, IDC_ARROW)); }

RestoreResult RestoreUnderWaitCursor(const std::string& name) {
    const CWaitCursor wait;
    return RestoreHives(BackupFolder(name));
}

}  // namespace

void CVellumorView::RunHiveWorker(UINT (*worker)(void*), CDlgHiveProgress& dialog) {
    EndFormerAnalysis();
    CParameter parameter;
    const CWaitCursor wait;
    dialog.Prepare();
    if (!m_analysis.StartWorker(GetSafeHwnd(), worker, &parameter, THREAD_PRIORITY_NORMAL)) return;
    (void)dialog.DoModal(OwnerWindow());
    WaitForWorker();
}

void CVellumorView::OnBackup() {
    if (!AskYesNo(GetSafeHwnd(), texts::kAskBackup)) return;
    const std::string folder = MakeBackupFolder();
    // Deliberate: the backup goes on without a folder, into the root of the current drive.
    if (folder.empty()) ShowMessage(GetSafeHwnd(), texts::kNoBackupFolder);
    g_backupFolder = std::make_unique<const std::string>(folder);
    RunHiveWorker(&BackupHivesThread, BackupDialog());
    g_backupFolder.reset();
}

LRESULT CVellumorView::OnBackupDone(WPARAM, LPARAM) {
    BackupDialog().Finish();
    ::Sleep(kBackupPause);
    ShowArrow();
    ShowMessage(GetSafeHwnd(), texts::kBackupDone);
    return 0;
}

void CVellumorView::OnRestore() {
    CDlgRestore dialog;
    if (dialog.DoModal(OwnerWindow()) != IDOK) return;
    switch (RestoreUnderWaitCursor(dialog.ChosenName())) {
        case RestoreResult::Abandoned:
            return;
        case RestoreResult::InUse:
            return ShowMessage(GetSafeHwnd(), texts::kSharingConflict);
        case RestoreResult::NotReplaced:
            return ShowMessage(GetSafeHwnd(), texts::kCannotRestore);
        case RestoreResult::Registered:
            break;
    }
    ShowArrow();
    if (dialog.ChosenDate().empty()) return;
    ShowMessage(GetSafeHwnd(), texts::kBackupMadeOn + dialog.ChosenDate() + texts::kRestored);
    SystemActions().RestartSystem();
}

void CVellumorView::OnCompact() {
    if (!AskYesNo(GetSafeHwnd(), texts::kAskCompact)) return;
    if (!DeleteFormerCompaction()) return ShowMessage(GetSafeHwnd(), texts::kSharingConflict);
    RunHiveWorker(&CompactHivesThread, CompactDialog());
}

LRESULT CVellumorView::OnCompactDone(WPARAM, LPARAM) {
    CompactDialog().Finish();
    ::Sleep(kCompactPause);
    CDlgCompactSummary summary;
    if (summary.DoModal(OwnerWindow()) != IDOK) return 0;
    ShowArrow();
    ShowMessage(GetSafeHwnd(), texts::kCompactDone, MB_ICONQUESTION);
    SystemActions().RestartSystem();
    return 0;
}
