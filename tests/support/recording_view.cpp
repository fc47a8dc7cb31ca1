#include "tests/support/recording_view.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "analysis/channel.h"
#include "analysis/report.h"

namespace {

constexpr const char* kClassName = "VellumorRecordingView";
constexpr UINT kFirstMessage = 0x465;
constexpr DWORD kForcedExitCode = 0xDEAD;

std::optional<std::string> Copy(const char* text) {
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

struct ThreadStart {
    const std::function<UINT(bool&)>* proc;
    bool canceled = false;
};

DWORD WINAPI ThreadMain(void* parameter) {
    auto* start = static_cast<ThreadStart*>(parameter);
    return (*start->proc)(start->canceled);
}

}  // namespace

CRecordingView::CRecordingView() : m_cancelEvent(::CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &WindowProc;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kClassName;
    ::RegisterClassA(&windowClass);  // fails from the second view on
    m_window = ::CreateWindowExA(0, kClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                 windowClass.hInstance, nullptr);
    REQUIRE(m_window != nullptr);
    ::SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

CRecordingView::~CRecordingView() { ::DestroyWindow(m_window); }

LRESULT CALLBACK CRecordingView::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message < kFirstMessage || message > kCanceledMessage)
        return ::DefWindowProcA(window, message, wParam, lParam);
    const auto view = reinterpret_cast<CRecordingView*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    view->Record(message, wParam, lParam);
    return 0;
}

void CRecordingView::Record(UINT message, WPARAM wParam, LPARAM lParam) {
    ViewEvent event{message, ::InSendMessage() != FALSE, wParam, lParam, {}, {}, {}, {}, {}, {}, {}};
    if (message == kRowMessage) {
        event.key = Copy(g_analysisChannel.pszInvalidKey);
        event.writeTime = Copy(g_analysisChannel.pszWriteTime);
        event.valueName = Copy(g_analysisChannel.pszValueName);
        event.data = Copy(g_analysisChannel.pszDataReference);
        event.reason = Copy(g_analysisContext.pszReason);
        event.check = Copy(g_analysisContext.pszCheck);
    }
    if (message == kProgressMessage) event.currentKey = Copy(g_analysisChannel.pszCurrentKey);
    m_events.push_back(event);
    if (onEvent) onEvent(event);
}

WorkerEnd CRecordingView::Run(const std::function<void()>& work) {
    const auto proc = [&work](bool& canceled) -> UINT {
        try {
            work();
        } catch (const CAnalysisCanceled&) {
            canceled = true;
        }
        return 0;
    };
    return RunThread(proc, 20'000);
}

WorkerEnd CRecordingView::RunStage(UINT (*threadProc)(void*), DWORD milliseconds) {
    return RunThread([threadProc](bool&) { return threadProc(nullptr); }, milliseconds);
}

WorkerEnd CRecordingView::RunThread(const std::function<UINT(bool&)>& proc, DWORD milliseconds) {
    const AnalysisChannel before = g_analysisChannel;
    g_analysisChannel.hViewWnd = m_window;
    g_analysisChannel.hCancelEvent = m_cancelEvent.Get();
    ThreadStart start{&proc};
    const CUniqueHandle thread(::CreateThread(nullptr, 0, &ThreadMain, &start, 0, nullptr));
    REQUIRE(static_cast<bool>(thread));
    WorkerEnd end;
    end.inTime = PumpUntilEnd(thread.Get(), milliseconds);
    if (!end.inTime) {
        Cancel();
        if (!PumpUntilEnd(thread.Get(), 2'000)) ::TerminateThread(thread.Get(), kForcedExitCode);
    }
    ::GetExitCodeThread(thread.Get(), &end.exitCode);
    end.canceled = start.canceled;
    g_analysisChannel = before;
    return end;
}

bool CRecordingView::PumpUntilEnd(HANDLE thread, DWORD milliseconds) {
    const DWORD started = ::GetTickCount();
    for (;;) {
        const DWORD spent = ::GetTickCount() - started;
        if (spent >= milliseconds) return false;
        const DWORD woken = ::MsgWaitForMultipleObjects(1, &thread, FALSE, milliseconds - spent, QS_ALLINPUT);
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) ::DispatchMessageA(&message);
        if (woken == WAIT_OBJECT_0) return true;  // what it had posted was dispatched just now
    }
}

std::size_t CRecordingView::Count(UINT message) const {
    return static_cast<std::size_t>(
        std::count_if(m_events.begin(), m_events.end(),
                      [message](const ViewEvent& event) { return event.message == message; }));
}

std::vector<ViewEvent> CRecordingView::Rows() const {
    std::vector<ViewEvent> rows;
    for (const ViewEvent& event : m_events)
        if (event.message == kRowMessage) rows.push_back(event);
    return rows;
}

std::string CRecordingView::RowLines() const {
    std::string lines;
    for (const ViewEvent& row : Rows())
        lines += row.valueName.value_or("(null)") + "|" + row.data.value_or("(null)") + "\n";
    return lines;
}

std::vector<std::string> CRecordingView::Progress() const {
    std::vector<std::string> keys;
    for (const ViewEvent& event : m_events)
        if (event.message == kProgressMessage) keys.push_back(event.currentKey.value_or("(null)"));
    return keys;
}

std::size_t CRecordingView::ProgressOf(const std::string& keyPath) const {
    const std::vector<std::string> keys = Progress();
    return static_cast<std::size_t>(std::count(keys.begin(), keys.end(), keyPath));
}
