#pragma once

#include <memory>
#include <vector>

#include "platform/owners.h"
#include "tests/driver/app_driver.h"

/// A suspended thread of another process; it goes on when this object ends.
class CFrozenThread {
public:
    explicit CFrozenThread(DWORD threadId);
    CFrozenThread(const CFrozenThread&) = delete;
    CFrozenThread& operator=(const CFrozenThread&) = delete;
    ~CFrozenThread();

    /// Lets the thread go on now.
    void Resume();

private:
    CUniqueHandle m_thread;
};

/// Suspends the worker of the running analysis, as if it hung in a long call into the system.
/// @param threadsBefore  the threads that ran before the analysis.
std::unique_ptr<CFrozenThread> FreezeWorker(const CAppDriver& app, const std::vector<DWORD>& threadsBefore);
