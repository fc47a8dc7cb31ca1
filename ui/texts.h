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

inline constexpr char kColumnDate[] = "Year/Month/Day/Hour:Minute:Second";
inline constexpr char kAskDeleteEnd[] = " ?";
inline constexpr char kDeletedEnd[] = " deleted successfully.";
inline constexpr char kAskDeleteSelected[] = "Delete the selected ";
inline constexpr char kDeletedSelected[] = "The selected ";

}  // namespace texts
