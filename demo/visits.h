#pragma once

#include "tests/driver/app_driver.h"

// The stops of the tour behind the analysis.

/// Takes a picture of the screen once what was shown last is drawn.
void Picture(const char* name);

/// Cleans one row that the demo planted, and brings its entry back from the undo file.
/// @return whether the entry was gone in between and is back.
[[nodiscard]] bool VisitCleaningAndUndo(const CAppDriver& app);

/// Makes a backup, and looks at the other commands on hives and at the about box. Nothing is restored or
/// compacted: both end with a restart.
void VisitDialogs(const CAppDriver& app);
