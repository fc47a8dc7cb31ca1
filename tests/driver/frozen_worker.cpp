#include "tests/driver/frozen_worker.h"

#include <algorithm>

#include "tests/driver/window_access.h"

namespace {

constexpr DWORD kAnswerPatience = 500;  // milliseconds

/// Whether the window's thread still gets its memory and its locks: it copies a long text for the status bar.
bool CanWork(const CAppDriver& app) {
    DWORD_PTR ignored = 0;
    return ::SendMessageTimeoutA(app.Frame(), WM_MENUSELECT, commands::kAnalyze, 1, SMTO_NORMAL,
                                 kAnswerPatience, &ignored) != 0;
}

std::vector<DWORD> NewThreads(const CAppDriver& app, const std::vector<DWORD>& before) {
    std::vector<DWORD> threads = app.Threads();
    std::erase_if(threads, [&](DWORD id) { return std::ranges::find(before, id) != before.end(); });
    return threads;
}

}  // namespace

CFrozenThread::CFrozenThread(DWORD threadId)
    : m_thread(::OpenThread(THREAD_SUSPEND_RESUME, FALSE, threadId)) {
    if (!m_thread || ::SuspendThread(m_thread.Get()) == static_cast<DWORD>(-1))
        throw CDriverError("the worker cannot be suspended");
}

CFrozenThread::~CFrozenThread() { Resume(); }

void CFrozenThread::Resume() {
    if (m_thread) ::ResumeThread(m_thread.Get());
    m_thread.Reset();
}

std::unique_ptr<CFrozenThread> FreezeWorker(const CAppDriver& app, const std::vector<DWORD>& threadsBefore) {
    return WaitFor("the worker to be frozen outside of all locks", [&]() -> std::unique_ptr<CFrozenThread> {
        const std::vector<DWORD> threads = NewThreads(app, threadsBefore);
        if (threads.size() != 1) throw CDriverError("an analysis runs in one worker thread at a time");
        auto frozen = std::make_unique<CFrozenThread>(threads.front());
        // It may have stopped while it held a lock of the process; then it goes on for a moment.
        return CanWork(app) ? std::move(frozen) : nullptr;
    });
}
