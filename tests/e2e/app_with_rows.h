#pragma once

#include "tests/e2e/program.h"

/// A running program with the planted rows in its list, of an analysis that was cancelled behind them. The
/// same one for all tests; each finds it with nothing checked, selected, focused or marked.
CAppDriver& AppWithRows();
