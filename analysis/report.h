#pragma once

#include <exception>
#include <string_view>

#include "analysis/reasons.h"

/// Unwinds a cancelled worker to its thread procedure, closing what the levels in between had opened.
class CAnalysisCanceled : public std::exception {};

/// Ends the work if the user has cancelled: tells the view, which shows its closing message, and then throws
/// CAnalysisCanceled. Never waits.
void PollCancel();

/// Shows the key that is examined now.
void ReportProgress(const char* keyPath);

/// Adds one row to the result list. Returns when the view has copied the texts.
/// @param valueName, dataReference  may be null for an empty cell.
void ReportRow(const char* keyPath, const char* writeTime, const char* valueName, const char* dataReference,
               Reason reason);

/// Adds a row for a value that refers to a file, if neither the file nor the program that the reference
/// begins with exists. A key that is not under a known root, or does not tell its write time, is not
/// reported.
/// @param keyPath  may be null: nothing happens.
void ReportIfFileMissing(const char* keyPath, const char* valueName, const char* path);
