#pragma once

#include <windows.h>

#include <span>

#include "analysis/channel.h"
#include "analysis/check.h"

/// One link of the analysis: its work, run on a worker thread of its own, and the message that this thread
/// posts to the view when the work is done.
struct AnalysisStage {
    const Check* check;  // the one check of this stage; null: the categories
    void (*work)();
    AnalysisMessage doneMessage;
    UINT (*threadProc)(void*);  // takes a CParameter that it ignores; returns 0, cancelled or not
};

/// The ten stages in the order in which they run.
[[nodiscard]] std::span<const AnalysisStage> AnalysisStages();
