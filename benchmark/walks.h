#pragma once

#include <cstddef>

// Walks over the scratch registry, in a worker thread whose sends a message-only window of this one receives.

/// The enumeration calls of the deep scan and nothing else. @return seconds.
[[nodiscard]] double TimeBareWalk();
/// The same with what the deep scan does for every value, whatever it holds: the test of an event, and a send
/// to the window.
[[nodiscard]] double TimeWalkWithSends();
/// The deep scan itself. @return seconds.
[[nodiscard]] double TimeDeepScan();
/// What the deep scan does once, without a clock: for those who count calls.
void RunDeepScan();
/// Runs any work of an analysis in that worker thread.
void RunAsWorker(void (*work)());
/// The rows that it found last.
[[nodiscard]] std::size_t RowsOfDeepScan();
