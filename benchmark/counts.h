#pragma once

#include <map>
#include <string>

/// Calls and allocations of one deep scan over the scratch registry, in all, for each key and for each value.
/// They depend on the code alone, not on the machine.
using Counts = std::map<std::string, double>;

[[nodiscard]] Counts CountDeepScan();

/// The registry calls, sends, waits and file calls of every check, and of all of them, over the whole
/// registry.
[[nodiscard]] Counts CountAnalysis();
