#pragma once

/// The texts that the user interface shows from code; menu, dialog and prompt texts stand in the resources.
namespace texts {

inline constexpr char kColumnKey[] = "Questionable Registry Key";
inline constexpr char kColumnWriteTime[] = "Write Time";
inline constexpr char kColumnValueName[] = "Value Name";
inline constexpr char kColumnData[] = "Questionable Data Reference";

inline constexpr char kAnalyzeTitle[] = "Analyzing result";
inline constexpr char kAnalyzeCompleted[] = "Registry analyzing completed successfully, ";
inline constexpr char kAnalyzeCanceled[] = "Registry analyzing canceled, ";
inline constexpr char kEntriesFound[] = " invalid entries found.";
inline constexpr char kNoEntryFound[] = "no invalid entry found.";

inline constexpr char kCleanTitle[] = "Cleaning";
inline constexpr char kCleanNothing[] =
    "Please check more than one line in the invalid registry entries list to clean.";
inline constexpr char kAskCleanOne[] = "Clean the invalid registry entry: ";
inline constexpr char kCleanedOne[] = "Invalid registry entry: ";
inline constexpr char kCleanedOneEnd[] = " cleaned successfully.";
inline constexpr char kAskCleanSeveral[] = "Clean the selected ";
inline constexpr char kAskCleanSeveralEnd[] = " invalid registry entries? ";  // with a blank at its end
inline constexpr char kCleanedSeveral[] = " selected invalid registry entries cleaned successfully.";

inline constexpr char kRepairUndone[] = "Repair made on ";
inline constexpr char kRecovered[] = " recovered successfully.";

inline constexpr char kAskBackup[] = "Registry backup will take 3 to 5 minutes. Continue?";
inline constexpr char kNoBackupFolder[] = "Can not create registry backup file.";
inline constexpr char kBackupDone[] = "Registry backup completed successfully.";

inline constexpr char kSharingConflict[] = "System must be restarted firstly because of sharing conflict!";
inline constexpr char kCannotRestore[] = "Can not restore registry, please restart system and try again!";
inline constexpr char kBackupMadeOn[] = "Backup made on ";
inline constexpr char kRestored[] =
    " restored successfully. For safety of system and registry, system must be restarted now!";

inline constexpr char kAskCompact[] =
    "Registry compact will take 3 to 5 minutes and other operations not recommended! Continue?";
inline constexpr char kCompactDone[] =
    "Registry compact finished. For safety of system and registry, System must be restarted now!";
inline constexpr char kColumnPath[] = "Path";
inline constexpr char kColumnSizeBefore[] = "Size before";
inline constexpr char kColumnSizeAfter[] = "Size after";
inline constexpr char kColumnRatio[] = "Ratio";

inline constexpr char kColumnDate[] = "Year/Month/Day/Hour:Minute:Second";
inline constexpr char kAskDeleteEnd[] = " ?";
inline constexpr char kDeletedEnd[] = " deleted successfully.";
inline constexpr char kAskDeleteSelected[] = "Delete the selected ";
inline constexpr char kDeletedSelected[] = "The selected ";

}  // namespace texts
