#pragma once

/// How often this program has allocated memory for objects so far. The test program's own `operator new`
/// counts.
[[nodiscard]] long AllocationCount();
