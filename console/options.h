#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/row_formats.h"

/// When a command restarts the system, where that is due.
enum class Restart { Never, Ask, Now };

/// Which rows an analysis gives.
struct RowChoice {
    std::vector<std::string> only;  // names of checks; empty: all
    std::vector<std::string> skip;
    std::string match;                 // pattern of key paths; empty: any
    std::vector<std::string> exclude;  // patterns
};

struct AnalyzeOptions {
    RowChoice choice;
    std::optional<RowFormat> format;  // nothing: a table
    std::string output;               // file; empty: standard output
};

struct CleanOptions {
    std::string rows;  // file; "-": standard input; empty: the rows of an analysis made now
    RowChoice choice;  // of that analysis
    bool dryRun = false;
    bool yes = false;
};
