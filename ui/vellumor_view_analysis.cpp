// The view's half of the analysis: it starts the stages, one after the other, and takes what they send.

#include "ui/vellumor_view.h"

#include <memory>
#include <string>

#include "analysis/channel.h"
#include "analysis/parameter.h"
#include "analysis/stages.h"
#include "framework/wait_cursor.h"
#include "framework/worker_thread.h"
#include "platform/host_services.h"
#include "resources/resource.h"
#include "ui/texts.h"

namespace {

constexpr DWORD kClosingPatience = 2000;  // milliseconds

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

CDlgAnalyze& AnalyzeDialog() {
    static CDlgAnalyze dialog;
    return dialog;
}

bool CVellumorView::IsCanceled() const {
    return ::WaitForSingleObject(m_cancelEvent.Get(), 0) == WAIT_OBJECT_0;
}

void CVellumorView::OnAnalyze() {
    EndFormerAnalysis();
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strLastKey.clear();
    if (GetItemCount() > 0) DeleteAllItems();
    ::ResetEvent(m_cancelEvent.Get());

    CParameter parameter;
    StartStage(0, &parameter);
    if (dialog.DoModal(OwnerWindow()) == IDCANCEL) ::SetEvent(m_cancelEvent.Get());
    if (!IsCanceled()) g_analysisChannel.hLastKeyEdit = dialog.GetDlgItem(IDC_LAST_KEY);
    m_batch.Show();
}

void CVellumorView::EndFormerAnalysis() {
    WaitForWorker();
    // What it posted before it ended would start a second chain of stages beside the new one.
    MSG message;
    while (::PeekMessageA(&message, GetSafeHwnd(), WM_STAGE1_DONE, WM_ANALYZE_DONE, PM_REMOVE) != FALSE)
        if (message.message == WM_QUIT) {  // no filter holds this one back
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
}

void CVellumorView::WaitForWorker() {
    // A cancelled worker may still be in a long file test. It is signalled, and while this thread waits for
    // it, it still has to receive what the worker sends, and to paint.
    const CWaitCursor wait;
    const DWORD patience = m_isClosing ? kClosingPatience : INFINITE;
    while (m_worker) {
        const HANDLE worker = m_worker.Get();
        const DWORD woken = ::MsgWaitForMultipleObjectsEx(1, &worker, patience, QS_SENDMESSAGE | QS_PAINT,
                                                          MWMO_INPUTAVAILABLE);
        if (woken != WAIT_OBJECT_0 + 1) break;
        MSG message;  // asking for a message delivers what was sent
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_SENDMESSAGE | PM_QS_PAINT) != FALSE)
            ::DispatchMessageA(&message);
    }
    m_worker.Reset();
}

void CVellumorView::StartStage(std::size_t index, void* parameter) {
    g_analysisChannel.hViewWnd = GetSafeHwnd();
    g_analysisChannel.hCancelEvent = m_cancelEvent.Get();
    m_worker = BeginThread(AnalysisStages()[index].threadProc, parameter, THREAD_PRIORITY_BELOW_NORMAL);
}

void CVellumorView::StartNextStage(std::size_t index) {
    const auto parameter = std::make_unique<CParameter>();
    StartStage(index, parameter.get());
}

LRESULT CVellumorView::OnAnalyzeRow(WPARAM, LPARAM) {
    const AnalysisChannel& channel = g_analysisChannel;
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strLastKey = OrEmpty(channel.pszInvalidKey);
    if (IsCanceled()) return 0;
    dialog.RefreshSoon();

    m_batch.Open();
    const int count = GetItemCount();
    InsertItem(count == 0 ? 0 : count + 1, OrEmpty(channel.pszInvalidKey));
    SetItemText(count, columns::kWriteTime, OrEmpty(channel.pszWriteTime));
    SetItemText(count, columns::kValueName, OrEmpty(channel.pszValueName));
    SetItemText(count, columns::kData, OrEmpty(channel.pszDataReference));
    m_batch.ShowIfDue();
    return 0;
}

LRESULT CVellumorView::OnAnalyzeProgress(WPARAM, LPARAM) {
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strCurrentKey = OrEmpty(g_analysisChannel.pszCurrentKey);
    // Asking the event costs a call into the system, so it is asked only where there is something to refresh.
    if (dialog.IsRefreshDue() && !IsCanceled()) dialog.Refresh();
    m_batch.ShowIfDue();
    return 0;
}

LRESULT CVellumorView::OnTimer(WPARAM timer, LPARAM) {
    if (timer != CRowBatch::kTimer) return Default();  // the list control has timers of its own
    m_batch.Show();
    return 0;
}

LRESULT CVellumorView::OnAnalyzeDone(WPARAM, LPARAM) {
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_bFinishing = 1;
    ::SendMessageA(dialog.GetSafeHwnd(), WM_CLOSE, 0, 0);
    ShowResult(texts::kAnalyzeCompleted);
    dialog.m_bFinishing = 0;
    return 0;
}

LRESULT CVellumorView::OnAnalyzeCanceled(WPARAM, LPARAM) {
    ::ResetEvent(m_cancelEvent.Get());
    if (m_isClosing) return 0;  // nobody is left to read a message
    AnalyzeDialog().m_bFinishing = 1;
    ShowResult(texts::kAnalyzeCanceled);
    AnalyzeDialog().m_bFinishing = 0;
    return 0;
}

void CVellumorView::ShowResult(const char* opening) {
    m_batch.Show();
    const int count = GetItemCount();
    const std::string found =
        count == 0 ? texts::kNoEntryFound : std::to_string(count) + texts::kEntriesFound;
    SystemActions().ShowMessage(GetSafeHwnd(), (opening + found).c_str(), texts::kAnalyzeTitle,
                                MB_ICONINFORMATION);
}

LRESULT CVellumorView::OnDestroy(WPARAM, LPARAM) {
    m_isClosing = true;
    ::SetEvent(m_cancelEvent.Get());
    WaitForWorker();
    return Default();
}
