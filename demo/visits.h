#pragma once

#include "tests/driver/app_driver.h"

// The stops of the tour behind the analysis.

/// Takes a picture of the screen once what was shown last is drawn.
void Picture(const char* name);

/// Cleans one row that the demo planted, and brings its entry back from the undo file.
/// @return whether the entry was gone in between and is back.
[[nodiscard]] bool VisitCleaningAndUndo(const CAppDriver& app);

/// Makes a backup, and looks at the list of backups. Nothing is restored, for that ends with a restart.
void VisitBackupAndRestore(const CAppDriver& app);

/// Compacts the demo's hive files; the restart at the end is put off for ever.
void VisitCompaction(const CAppDriver& app);

void VisitAboutBox(const CAppDriver& app);
