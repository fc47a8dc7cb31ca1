#pragma once

/// How often this program has allocated memory for objects so far. The test program's own `operator new`
/// counts.
[[nodiscard]] long AllocationCount();

/// How many of these have not been freed yet.
[[nodiscard]] long LiveAllocations();
