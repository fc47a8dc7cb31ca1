#pragma once

#include <windows.h>

#include "platform/owners.h"

using ThreadProc = UINT (*)(void* parameter);

/// Starts a worker thread with the default stack size.
/// @param priority  THREAD_PRIORITY_..., in force before the procedure's first instruction.
/// @return the thread; empty when the system refuses. The thread runs on when the handle is closed.
[[nodiscard]] CUniqueHandle BeginThread(ThreadProc proc, void* parameter, int priority);
