#include <windows.h>

#include "console/code_page.h"
#include "console/commands.h"
#include "console/dated_names.h"
#include "console/interruption.h"
#include "console/progress_line.h"
#include "console/restart.h"
#include "console/rights.h"
#include "console/text_table_rules.h"
#include "hives/backup.h"
#include "hives/backup_folder.h"
#include "hives/compaction.h"
#include "hives/compaction_rules.h"
#include "hives/restore.h"
#include "platform/owners.h"
#include "repair/undo_name_rules.h"

namespace {

constexpr char kSharingConflict[] =
    "The system must be restarted first: it still runs on hive files that were replaced before.";

/// The folder that takes replaced hives stands among the backups, but is none.
std::vector<std::string> FindRestorable() {
    std::vector<std::string> names = FindBackups();
    std::erase_if(names, [](const std::string& name) { return ::lstrcmpiA(name.c_str(), "System") == 0; });
    return names;
}

std::optional<std::string> BackupDate(std::string_view name) { return DottedTimeAsDate(name); }

const DatedNames kBackups{&FindRestorable, &BackupDate, &DeleteBackup, "backup"};

bool CanAskForRestart(CTerminal& terminal, Restart restart) {
    if (restart != Restart::Ask || terminal.CanAsk()) return true;
    WriteErrorLine(terminal, "There is nobody to be asked here: use --restart never or --restart now.");
    return false;
}

ExitCode Fail(CTerminal& terminal, const std::string& text) {
    WriteErrorLine(terminal, text);
    return ExitCode::Failed;
}

bool HoldsHiveFiles(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    return static_cast<bool>(CUniqueFind(::FindFirstFileA((folder + "\\*.bck").c_str(), &entry)));
}

bool SaveAllHives(CTerminal& terminal, const std::string& folder) {
    CProgressLine line(terminal);
    std::size_t saved = 0;
    line.Show("Saving the first hive");
    return BackupHives(folder, [&] { line.Show(std::to_string(++saved) + " hives saved"); });
}

bool WriteSummary(CTerminal& terminal) {
    std::vector<std::vector<std::string>> lines{{"HIVE FILE", "BEFORE", "AFTER", "RATIO"}};
    for (const CompactedHive& hive : FindCompactedHives())
        lines.push_back({Printable(ToUtf8(hive.file)), SizeText(hive.bytesBefore), SizeText(hive.bytesAfter),
                         RatioText(hive.bytesBefore, hive.bytesAfter)});
    return lines.size() == 1 ||
           WriteOutputText(terminal, TextTable(lines, terminal.OutputWidth().value_or(kAnyWidth)));
}

ExitCode ReportRestore(CTerminal& terminal, RestoreResult result) {
    constexpr char kPartly[] = "Hives before that one are registered for the next start all the same.";
    switch (result) {
        case RestoreResult::Abandoned:
            return Fail(terminal,
                        std::string("A file of the backup is of no hive that is loaded. ") + kPartly);
        case RestoreResult::InUse:
            return Fail(terminal, kSharingConflict);
        case RestoreResult::NotReplaced:
            return Fail(terminal, std::string("A hive could not be replaced. ") + kPartly);
        case RestoreResult::Registered:
            break;
    }
    return ExitCode::Done;
}

}  // namespace

ExitCode RunBackup(CTerminal& terminal, Restart restart) {
    if (!CanAskForRestart(terminal, restart)) return ExitCode::WrongUsage;
    if (!HasRights(terminal, {SE_BACKUP_NAME})) return ExitCode::RightsMissing;
    if (restart != Restart::Never && !HasRights(terminal, {SE_SHUTDOWN_NAME})) return ExitCode::RightsMissing;
    const std::string folder = MakeBackupFolder();
    if (::GetFileAttributesA(folder.c_str()) == INVALID_FILE_ATTRIBUTES)
        return Fail(terminal, "The folder for the backup could not be made.");
    {
        const CUninterruptible whole;
        if (!SaveAllHives(terminal, folder))
            return Fail(terminal, "A hive could not be saved; the backup is not complete: " + ToUtf8(folder));
    }
    const bool isTold = WriteOutputLine(terminal, "Backup: " + ToUtf8(folder));
    const ExitCode result = RestartAsAsked(terminal, restart, false);
    return isTold ? result : ExitCode::Failed;
}

ExitCode RunRestoreList(CTerminal& terminal) { return ListNames(terminal, kBackups); }

ExitCode RunRestoreApply(CTerminal& terminal, const std::string& name, Restart restart) {
    if (!CanAskForRestart(terminal, restart)) return ExitCode::WrongUsage;
    if (!HasRights(terminal, {SE_BACKUP_NAME, SE_RESTORE_NAME, SE_SHUTDOWN_NAME}))
        return ExitCode::RightsMissing;
    if (!IsName(terminal, kBackups, name)) return ExitCode::Failed;
    const std::string folder = BackupFolder(name);
    if (!HoldsHiveFiles(folder)) return Fail(terminal, "The backup holds no hive files: " + ToUtf8(folder));
    {
        const CUninterruptible whole;
        const ExitCode result = ReportRestore(terminal, RestoreHives(folder));
        if (result != ExitCode::Done) return result;
    }
    // The hives are registered, so the restart is due whether or not anybody reads of it.
    const bool isTold = WriteOutputLine(terminal, "registered for the next start: " + ToUtf8(folder));
    const ExitCode result = RestartAsAsked(terminal, restart, true);
    return isTold ? result : ExitCode::Failed;
}

ExitCode RunRestoreDelete(CTerminal& terminal, const std::vector<std::string>& names) {
    if (!HasRights(terminal)) return ExitCode::RightsMissing;
    return DeleteNames(terminal, kBackups, names);
}

ExitCode RunCompact(CTerminal& terminal, Restart restart) {
    if (!CanAskForRestart(terminal, restart)) return ExitCode::WrongUsage;
    if (!HasRights(terminal, {SE_BACKUP_NAME, SE_RESTORE_NAME, SE_SHUTDOWN_NAME}))
        return ExitCode::RightsMissing;
    {
        const CUninterruptible whole;
        if (!DeleteFormerCompaction()) return Fail(terminal, kSharingConflict);
        if (!CompactHives())
            return Fail(terminal,
                        "A hive could not be compacted. Hives before it are replaced with the next start.");
    }
    const bool isTold = WriteSummary(terminal);
    const ExitCode result = RestartAsAsked(terminal, restart, true);
    return isTold ? result : ExitCode::Failed;
}
