#include "console/analysis_window.h"

#include "analysis/parameter.h"

namespace {

constexpr UINT_PTR kWakeTimer = 1;
constexpr UINT kWakePeriod = 1000;  // milliseconds

}  // namespace

CAnalysisWindow::CAnalysisWindow(std::function<void(const Progress&)> progress,
                                 std::function<bool(const Row&)> isWanted)
    : m_progress(std::move(progress)), m_isWanted(std::move(isWanted)) {}

CAnalysisWindow::End CAnalysisWindow::Run(const CCheckChoice* choice) {
    m_rows.clear();
    m_end = End::Failed;
    const char* className = RegisterWindowClass("VellumorConsole", nullptr, nullptr);
    if (GetSafeHwnd() == nullptr && !Create(className, "", 0, 0, {}, HWND_MESSAGE, nullptr)) return m_end;
    m_analysis.Choose(choice);
    m_startedAt = ::GetTickCount();
    CParameter parameter;
    m_hasEnded = !m_analysis.Start(GetSafeHwnd(), &parameter);
    PumpMessages();
    m_analysis.EndFormer(GetSafeHwnd(), INFINITE);
    return m_end;
}

void CAnalysisWindow::PumpMessages() {
    MSG message;
    // A cancel is sent and then posted; should there be no room for the post, the timer brings a message.
    ::SetTimer(GetSafeHwnd(), kWakeTimer, kWakePeriod, nullptr);
    // What the workers send is delivered while the next posted message is waited for.
    while (!m_hasEnded && ::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
    ::KillTimer(GetSafeHwnd(), kWakeTimer);
}

LRESULT CAnalysisWindow::OnAnalysisMessage(WPARAM, LPARAM) {
    if (!m_analysis.TakeMessage(CurrentMessage())) m_hasEnded = true;
    return 0;
}

void CAnalysisWindow::TakeRow(const AnalysisChannel& channel, const AnalysisContext& context) {
    if (IsCanceled()) return;
    Row row{OrEmpty(channel.pszInvalidKey),    OrEmpty(channel.pszWriteTime), OrEmpty(channel.pszValueName),
            OrEmpty(channel.pszDataReference), OrEmpty(context.pszCheck),     OrEmpty(context.pszReason)};
    if (!m_isWanted || m_isWanted(row)) m_rows.push_back(std::move(row));
}

void CAnalysisWindow::TakeProgress(const char* keyPath) {
    if (!m_progress) return;
    m_progress({m_analysis.Stage(), m_rows.size(), OrEmpty(keyPath), ::GetTickCount() - m_startedAt});
}

void CAnalysisWindow::TakeDone() {
    m_end = End::Done;
    m_hasEnded = true;
}

void CAnalysisWindow::TakeCanceled() {
    m_end = End::Canceled;
    m_hasEnded = true;
    // The message was sent, and the loop is woken by posted ones only.
    ::PostMessageA(GetSafeHwnd(), WM_NULL, 0, 0);
}

std::span<const MessageRow> CAnalysisWindow::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_STAGE1_DONE, Handle<&CAnalysisWindow::OnAnalysisMessage>, WM_ANALYZE_CANCELED},
    };
    return kRows;
}
