#pragma once

#include <windows.h>

/// The messages by which workers reach the view's window. Stage-done messages are posted, the others sent.
enum AnalysisMessage : UINT {
    WM_STAGE1_DONE = WM_USER + 0x65,
    WM_STAGE2_DONE,
    WM_STAGE3_DONE,
    WM_STAGE4_DONE,
    WM_STAGE5_DONE,
    WM_STAGE6_DONE,
    WM_STAGE7_DONE,
    WM_STAGE8_DONE,
    WM_STAGE9_DONE,
    WM_ANALYZE_DONE,      // the last stage is done
    WM_ANALYZE_ROW,       // a row waits in the channel
    WM_ANALYZE_PROGRESS,  // the key under examination waits in the channel
    WM_ANALYZE_CANCELED,  // a stage saw the cancel event and is about to end
    WM_COMPACT_DONE,      // posted: all hives are compacted
    WM_BACKUP_DONE,       // posted: all hives are saved
};

/// The slots through which a worker hands rows and progress to the view. The worker fills them and sends a
/// message; while the view reads, the worker waits in its send, so no lock is needed and the texts may stand
/// on the worker's stack. They are valid during the send only.
struct AnalysisChannel {
    const char* pszInvalidKey = nullptr;     // column 0 of the row
    const char* pszValueName = nullptr;      // column 2; null: empty cell
    const char* pszDataReference = nullptr;  // column 3; null: empty cell
    const char* pszWriteTime = nullptr;      // column 1
    const char* pszCurrentKey = nullptr;     // the key that is examined now
    HWND hLastKeyEdit = nullptr;
    HWND hViewWnd = nullptr;        // receives every message above
    HANDLE hCancelEvent = nullptr;  // borrowed from the view
};

/// The text of a slot.
[[nodiscard]] inline const char* OrEmpty(const char* slot) { return slot != nullptr ? slot : ""; }

/// The process's one channel; one worker at a time uses it.
extern AnalysisChannel g_analysisChannel;

class CCheckChoice;

/// What stands beside the channel, filled and read like it.
struct AnalysisContext {
    const char* pszReason = nullptr;             // of the row: why it is one
    const char* pszCheck = nullptr;              // name of the check that runs, or ran last
    const CCheckChoice* pCheckChoice = nullptr;  // the checks that run; null: all. Set by the host
};

extern AnalysisContext g_analysisContext;
