#pragma once

#include <windows.h>

#include "analysis/channel.h"
#include "analysis/check.h"
#include "platform/owners.h"
#include "platform/worker_thread.h"

/// Who hosts an analysis: it keeps the rows and shows the progress. Called on the thread of the host's
/// window, while the worker waits.
class CAnalysisHost {
public:
    /// A row waits in the channel, and its reason and check in the context; all texts last as long as this
    /// call; null: an empty cell. It is called after a cancel too: whether the row still counts is the host's
    /// choice.
    virtual void TakeRow(const AnalysisChannel& channel, const AnalysisContext& context) = 0;
    /// A key is examined now.
    virtual void TakeProgress(const char* keyPath) = 0;
    /// The last stage is done.
    virtual void TakeDone() = 0;
    /// A worker has seen the cancel event, and ends.
    virtual void TakeCanceled() = 0;

protected:
    ~CAnalysisHost() = default;
};

/// The host's half of the analysis: the cancel event, the chain of stages, and the way from a worker's
/// message to the host. Its window belongs to the host.
class CAnalysisRun {
public:
    explicit CAnalysisRun(CAnalysisHost& host);

    /// Starts the first stage. The cancel event is left as it is.
    /// @param window     receives the workers' messages, and hands them to TakeMessage.
    /// @param parameter  of the first stage's thread.
    /// @return false when its thread could not be started, or nobody could cancel it.
    bool Start(HWND window, void* parameter);

    /// To be called for every message from WM_STAGE1_DONE to WM_ANALYZE_CANCELED that the window receives.
    /// @return false when the message was to start a stage, whose thread could not be started.
    bool TakeMessage(UINT message);

    /// Which of the ten stages started last; counted from 1.
    [[nodiscard]] std::size_t Stage() const { return m_stage; }

    /// Leaves checks out of the next analyses. @param choice  borrowed; null: all checks run.
    void Choose(const CCheckChoice* choice) { m_choice = choice; }

    void Cancel() const { ::SetEvent(m_cancelEvent.Get()); }
    void Uncancel() const { ::ResetEvent(m_cancelEvent.Get()); }
    [[nodiscard]] bool IsCanceled() const;
    /// The event that Cancel sets, for those who cancel from another thread; borrowed.
    [[nodiscard]] HANDLE CancelEvent() const { return m_cancelEvent.Get(); }

    /// Starts another worker that reports to the window: one at a time, like the stages.
    /// @return whether it has been started.
    [[nodiscard]] bool StartWorker(HWND window, ThreadProc worker, void* parameter, int priority);
    /// Waits until the worker that was started last has ended, and serves its messages meanwhile.
    /// @param patience  milliseconds between two messages; INFINITE: as long as it takes.
    void WaitForWorker(DWORD patience);
    /// The same, and then drops what the worker had posted: it would start a second chain of stages beside
    /// the next one.
    void EndFormer(HWND window, DWORD patience);

private:
    bool StartStage(std::size_t index, void* parameter);

    CAnalysisHost& m_host;
    CUniqueHandle m_cancelEvent;  // manual-reset; signalled: stop
    CUniqueHandle m_worker;       // the thread started last
    HWND m_window = nullptr;
    std::size_t m_stage = 0;
    const CCheckChoice* m_choice = nullptr;
};
