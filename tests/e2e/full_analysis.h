#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/program.h"

/// What was seen from outside of one whole analysis over the planted values.
struct AnalysisRecord {
    // While the dialog was open.
    bool ownerWasEnabled = true;
    std::set<std::string> currentKeys;
    std::set<std::string> lastKeys;
    std::set<int> barPositions;
    std::vector<int> counts;          // the row counts seen, without repetitions
    bool rowsWereDrawn = false;       // the first row could be seen on the screen
    int lastKeyComparisons = 0;       // made when no row had come for a while: the last key shown ...
    std::set<std::string> staleKeys;  // ... was not the newest row's
    // The closing box.
    std::string caption;
    std::string text;
    std::vector<std::string> buttons;
    std::string icon;  // the name of the icon that the box showed; empty: none
    bool boxOwnerWasEnabled = true;
    bool commandRanBehindBox = true;  // one that was posted to the main window while the box was open
    bool dialogWasHidden = false;
    // Afterwards.
    std::vector<ListRow> rows;
    std::vector<int> checkedRows;
};

/// The record of the one analysis that many tests look at; made when it is first asked for.
/// @throws CDriverError, each time again, when that failed.
const AnalysisRecord& FullAnalysis();

/// The program that ran this analysis, with its rows still in the list.
CAppDriver& AnalyzedApp();
