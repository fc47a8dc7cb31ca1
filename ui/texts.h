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

inline constexpr char kRepairUndone[] = "Repair made on ";
inline constexpr char kRecovered[] = " recovered successfully.";

inline constexpr char kColumnDate[] = "Year/Month/Day/Hour:Minute:Second";
inline constexpr char kAskDeleteEnd[] = " ?";
inline constexpr char kDeletedEnd[] = " deleted successfully.";
inline constexpr char kAskDeleteSelected[] = "Delete the selected ";
inline constexpr char kDeletedSelected[] = "The selected ";

}  // namespace texts
