#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/owners.h"

/// One message that reached the view, with the texts that stood in the channel while it was handled.
struct ViewEvent {
    UINT message = 0;
    bool sent = false;  // and not posted
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    // Of a row; nothing: the slot was null.
    std::optional<std::string> key, writeTime, valueName, data, reason, check;
    // Of progress.
    std::optional<std::string> currentKey;
};

/// How a worker thread ended.
struct WorkerEnd {
    bool inTime = false;    // false: it had to be cancelled or ended by force
    bool canceled = false;  // the work ended by CAnalysisCanceled
    DWORD exitCode = 0;
};

constexpr UINT kRowMessage = 0x46F;
constexpr UINT kProgressMessage = 0x470;
constexpr UINT kCanceledMessage = 0x471;

/// A message-only window in the place of the result list: it records what the workers send and post.
class CRecordingView {
public:
    CRecordingView();
    CRecordingView(const CRecordingView&) = delete;
    CRecordingView& operator=(const CRecordingView&) = delete;
    ~CRecordingView();

    /// Runs on the test's thread while the worker waits in its send.
    std::function<void(const ViewEvent&)> onEvent;

    [[nodiscard]] HWND Get() const { return m_window; }
    void Cancel() const { ::SetEvent(m_cancelEvent.Get()); }
    void Uncancel() const { ::ResetEvent(m_cancelEvent.Get()); }

    /// Runs the work on a second thread with the channel set up for this view, and serves the view meanwhile.
    /// Afterwards the channel is as it was.
    WorkerEnd Run(const std::function<void()>& work);
    /// The same for a stage's thread procedure.
    WorkerEnd RunStage(UINT (*threadProc)(void*), DWORD milliseconds = 20'000);

    [[nodiscard]] const std::vector<ViewEvent>& Events() const { return m_events; }
    void Forget() { m_events.clear(); }
    [[nodiscard]] std::size_t Count(UINT message) const;
    [[nodiscard]] std::vector<ViewEvent> Rows() const;
    /// The rows as lines "value name|data reference", a null slot as "(null)".
    [[nodiscard]] std::string RowLines() const;
    /// The keys shown as progress, in order.
    [[nodiscard]] std::vector<std::string> Progress() const;
    /// How often a key was shown as progress.
    [[nodiscard]] std::size_t ProgressOf(const std::string& keyPath) const;

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Record(UINT message, WPARAM wParam, LPARAM lParam);
    WorkerEnd RunThread(const std::function<UINT(bool& canceled)>& proc, DWORD milliseconds);
    /// Serves messages until the thread has ended; false when the time is over first.
    [[nodiscard]] static bool PumpUntilEnd(HANDLE thread, DWORD milliseconds);

    HWND m_window;
    CUniqueHandle m_cancelEvent;
    std::vector<ViewEvent> m_events;
};
