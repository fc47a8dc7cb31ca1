#include "benchmark/walks.h"

#include <windows.h>

#include <functional>
#include <stdexcept>

#include "analysis/channel.h"
#include "analysis/deep_scan.h"
#include "analysis/report.h"
#include "benchmark/registry_maker.h"
#include "benchmark/series.h"
#include "benchmark/tree_walk.h"
#include "framework/wnd.h"
#include "platform/owners.h"
#include "platform/worker_thread.h"
#include "registry/registry_access.h"

namespace {

/// Receives what a worker sends, counts the rows, and does nothing else.
class CReceiver : public CWnd {
public:
    CReceiver() : m_cancelEvent(::CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
        if (!Create(RegisterWindowClass("VellumorBench", nullptr, nullptr), "", 0, 0, {}, HWND_MESSAGE,
                    nullptr))
            throw std::runtime_error("no window");
        g_analysisChannel.hViewWnd = GetSafeHwnd();
        g_analysisChannel.hCancelEvent = m_cancelEvent.Get();
    }

    /// Runs work in a worker thread and serves it until it has ended. @return seconds.
    double Run(void (*work)()) {
        return SecondsOf([work]() mutable {
            const CUniqueHandle thread = BeginThread(&RunWork, &work, THREAD_PRIORITY_NORMAL);
            const HANDLE handle = thread.Get();
            MSG message;
            while (::MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0)
                while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
                    ::DispatchMessageA(&message);
        });
    }

    std::size_t rows = 0;

protected:
    [[nodiscard]] std::span<const MessageRow> Messages() const override {
        static constexpr MessageRow kRows[] = {
            {WM_ANALYZE_ROW, Handle<&CReceiver::OnRow>},
            {WM_ANALYZE_PROGRESS, Handle<&CReceiver::OnProgress>},
        };
        return kRows;
    }

private:
    static UINT RunWork(void* work) {
        (*static_cast<void (**)()>(work))();
        return 0;
    }
    LRESULT OnRow(WPARAM, LPARAM) {
        ++rows;
        return 0;
    }
    LRESULT OnProgress(WPARAM, LPARAM) { return 0; }

    CUniqueHandle m_cancelEvent;
};

CUniqueKey OpenScratch() {
    CUniqueKey key;
    if (OpenKey(HKEY_LOCAL_MACHINE, kScratchKey, kReadAccess, key) != ERROR_SUCCESS)
        throw std::runtime_error("no scratch registry");
    return key;
}

const auto kNothing = [] {};

void WalkBarely() {
    const CUniqueKey key = OpenScratch();
    WalkTree(key.Get(), kNothing, kNothing);
}

void TestAndSend() {
    ::WaitForSingleObject(g_analysisChannel.hCancelEvent, 0);
    ::SendMessageA(g_analysisChannel.hViewWnd, WM_ANALYZE_PROGRESS, 0, 0);
}

void WalkWithSends() {
    const CUniqueKey key = OpenScratch();
    WalkTree(key.Get(), kNothing, &TestAndSend);
}

void WalkHivesWithSends() {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_USERS})
        WalkTree(root, kNothing, &TestAndSend);
}

void ScanDeeply() {
    const CUniqueKey key = OpenScratch();
    ScanHiveForDeadFiles(key.Get(), kScratchPath);
}

std::size_t g_rows = 0;

double Time(void (*work)()) {
    CReceiver receiver;
    const double seconds = receiver.Run(work);
    g_rows = receiver.rows;
    return seconds;
}

}  // namespace

double TimeBareWalk() { return Time(&WalkBarely); }
double TimeWalkWithSends() { return Time(&WalkWithSends); }
double TimeHivesWithSends() { return Time(&WalkHivesWithSends); }
double TimeDeepScan() { return Time(&ScanDeeply); }

void RunDeepScan() { RunAsWorker(&ScanDeeply); }
void RunAsWorker(void (*work)()) { (void)Time(work); }
std::size_t RowsOfDeepScan() { return g_rows; }
