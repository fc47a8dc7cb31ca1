#include "analysis/analysis_run.h"

#include <algorithm>

#include "analysis/parameter.h"
#include "analysis/stages.h"

namespace {

constexpr DWORD kPollPeriod = 20;  // milliseconds

CUniqueHandle MakeCancelEvent() { return CUniqueHandle(::CreateEventA(nullptr, TRUE, FALSE, nullptr)); }

/// Waits for a worker's end or a message. @return whether it is a message.
bool IsStillBusy(HANDLE worker, DWORD& patience) {
    const DWORD woken =
        ::MsgWaitForMultipleObjectsEx(1, &worker, patience, QS_SENDMESSAGE | QS_PAINT, MWMO_INPUTAVAILABLE);
    if (woken != WAIT_FAILED) return woken == WAIT_OBJECT_0 + 1;
    // Where the system refuses that wait, the worker is looked at now and then.
    const DWORD period = std::min(patience, kPollPeriod);
    if (patience != INFINITE) patience -= period;
    return period != 0 && ::WaitForSingleObject(worker, period) == WAIT_TIMEOUT;
}

}  // namespace

CAnalysisRun::CAnalysisRun(CAnalysisHost& host) : m_host(host), m_cancelEvent(MakeCancelEvent()) {}

bool CAnalysisRun::IsCanceled() const {
    return ::WaitForSingleObject(m_cancelEvent.Get(), 0) == WAIT_OBJECT_0;
}

bool CAnalysisRun::Start(HWND window, void* parameter) {
    m_window = window;
    if (!m_cancelEvent) m_cancelEvent = MakeCancelEvent();
    return m_cancelEvent && StartStage(0, parameter);
}

bool CAnalysisRun::StartStage(std::size_t index, void* parameter) {
    m_stage = index + 1;
    g_analysisChannel.hCancelEvent = m_cancelEvent.Get();
    g_analysisContext.pCheckChoice = m_choice;
    return StartWorker(m_window, AnalysisStages()[index].threadProc, parameter, THREAD_PRIORITY_BELOW_NORMAL);
}

bool CAnalysisRun::StartWorker(HWND window, ThreadProc worker, void* parameter, int priority) {
    g_analysisChannel.hViewWnd = window;
    m_worker = BeginThread(worker, parameter, priority);
    return static_cast<bool>(m_worker);
}

bool CAnalysisRun::TakeMessage(UINT message) {
    switch (message) {
        case WM_ANALYZE_ROW:
            m_host.TakeRow(g_analysisChannel, g_analysisContext);
            return true;
        case WM_ANALYZE_PROGRESS:
            m_host.TakeProgress(g_analysisChannel.pszCurrentKey);
            return true;
        case WM_ANALYZE_DONE:
            m_host.TakeDone();
            return true;
        case WM_ANALYZE_CANCELED:
            m_host.TakeCanceled();
            return true;
        default:
            break;
    }
    // Stages count from 1, so the number of the one that is done is the next one's index.
    CParameter parameter;
    return StartStage(message - WM_STAGE1_DONE + 1, &parameter);
}

void CAnalysisRun::WaitForWorker(DWORD patience) {
    // A cancelled worker may still be in a long file test. It is signalled, and while this thread waits for
    // it, it still has to receive what the worker sends, and to paint.
    while (m_worker) {
        const HANDLE worker = m_worker.Get();
        if (!IsStillBusy(worker, patience)) break;
        MSG message;  // asking for a message delivers what was sent
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_SENDMESSAGE | PM_QS_PAINT) != FALSE)
            ::DispatchMessageA(&message);
    }
    m_worker.Reset();
}

void CAnalysisRun::EndFormer(HWND window, DWORD patience) {
    WaitForWorker(patience);
    MSG message;
    while (::PeekMessageA(&message, window, WM_STAGE1_DONE, WM_ANALYZE_DONE, PM_REMOVE) != FALSE)
        if (message.message == WM_QUIT) {  // no filter holds this one back
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
}
