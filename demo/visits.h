#pragma once

#include "tests/driver/app_driver.h"

// The stops of the tour behind the analysis. Each leaves the program as it found it, but for what it says.

/// Takes a picture of the screen once what was shown last is drawn.
void Picture(const char* name);

/// Cleans one row that the demo planted, and brings its entry back from the undo file.
/// @return whether the entry was gone in between and is back.
[[nodiscard]] bool VisitCleaningAndUndo(const CAppDriver& app);

/// Looks at the about box, and at the questions and dialogs of the hive commands; none is answered with Yes.
void VisitDialogs(const CAppDriver& app);
