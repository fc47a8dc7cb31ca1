// The view's half of the analysis: it starts the stages, one after the other, and takes what they send.

#include "ui/vellumor_view.h"

#include <string>

#include "analysis/channel.h"
#include "analysis/parameter.h"
#include "framework/wait_cursor.h"
#include "platform/host_services.h"
#include "resources/resource.h"
#include "ui/texts.h"

namespace {

constexpr DWORD kClosingPatience = 2000;  // milliseconds

}  // namespace

CDlgAnalyze& AnalyzeDialog() {
    static CDlgAnalyze dialog;
    return dialog;
}

void CVellumorView::OnAnalyze() {
    EndFormerAnalysis();
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strLastKey.clear();
    if (GetItemCount() > 0) DeleteAllItems();
    m_analysis.Uncancel();

    CParameter parameter;
    m_analysis.Start(GetSafeHwnd(), &parameter);
    if (dialog.DoModal(OwnerWindow()) == IDCANCEL) m_analysis.Cancel();
    if (!m_analysis.IsCanceled()) g_analysisChannel.hLastKeyEdit = dialog.GetDlgItem(IDC_LAST_KEY);
    m_batch.Show();
}

void CVellumorView::EndFormerAnalysis() {
    const CWaitCursor wait;
    m_analysis.EndFormer(GetSafeHwnd(), INFINITE);
}

void CVellumorView::WaitForWorker() {
    const CWaitCursor wait;
    m_analysis.WaitForWorker(m_isClosing ? kClosingPatience : INFINITE);
}

LRESULT CVellumorView::OnAnalysisMessage(WPARAM, LPARAM) {
    m_analysis.TakeMessage(CurrentMessage());
    return 0;
}

void CVellumorView::TakeRow(const AnalysisChannel& channel, const AnalysisContext&) {
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strLastKey = OrEmpty(channel.pszInvalidKey);
    if (m_analysis.IsCanceled()) return;
    dialog.RefreshSoon();

    m_batch.Open();
    const int count = GetItemCount();
    InsertItem(count == 0 ? 0 : count + 1, OrEmpty(channel.pszInvalidKey));
    SetItemText(count, columns::kWriteTime, OrEmpty(channel.pszWriteTime));
    SetItemText(count, columns::kValueName, OrEmpty(channel.pszValueName));
    SetItemText(count, columns::kData, OrEmpty(channel.pszDataReference));
    m_batch.ShowIfDue();
}

void CVellumorView::TakeProgress(const char* keyPath) {
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_strCurrentKey = OrEmpty(keyPath);
    // Asking the event costs a call into the system, so it is asked only where there is something to refresh.
    if (dialog.IsRefreshDue() && !m_analysis.IsCanceled()) dialog.Refresh();
    m_batch.ShowIfDue();
}

LRESULT CVellumorView::OnTimer(WPARAM timer, LPARAM) {
    if (timer != CRowBatch::kTimer) return Default();  // the list control has timers of its own
    m_batch.Show();
    return 0;
}

void CVellumorView::TakeDone() {
    CDlgAnalyze& dialog = AnalyzeDialog();
    dialog.m_bFinishing = 1;
    ::SendMessageA(dialog.GetSafeHwnd(), WM_CLOSE, 0, 0);
    ShowResult(texts::kAnalyzeCompleted);
    dialog.m_bFinishing = 0;
}

void CVellumorView::TakeCanceled() {
    m_analysis.Uncancel();
    if (m_isClosing) return;  // nobody is left to read a message
    AnalyzeDialog().m_bFinishing = 1;
    ShowResult(texts::kAnalyzeCanceled);
    AnalyzeDialog().m_bFinishing = 0;
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
    m_analysis.Cancel();
    WaitForWorker();
    return Default();
}
