#include "ui/hive_workers.h"

#include "analysis/channel.h"
#include "hives/backup.h"
#include "hives/compaction.h"
#include "ui/dlg_backup.h"
#include "ui/dlg_compact.h"

std::unique_ptr<const std::string> g_backupFolder;

namespace {

void TellEnd(CDlgHiveProgress& dialog, bool isDone, UINT doneMessage) {
    if (!isDone) return dialog.SetGivenUp();
    dialog.SetDone();
    ::PostMessageA(g_analysisChannel.hViewWnd, doneMessage, 0, 0);
}

}  // namespace

UINT BackupHivesThread(void*) {
    const std::string folder = *g_backupFolder;  // its own: a closing window does not wait for long
    EnableBackupPrivilege();
    CDlgBackup& dialog = BackupDialog();
    const bool isDone = BackupHives(folder, [&dialog] { dialog.StepHives(); });
    TellEnd(dialog, isDone, WM_BACKUP_DONE);
    return 0;
}

UINT CompactHivesThread(void*) {
    TellEnd(CompactDialog(), CompactHives(), WM_COMPACT_DONE);
    return 0;
}
