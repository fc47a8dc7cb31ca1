#include "console/interruption.h"

#include "console/exit_code.h"

namespace {

/// The system calls a handler on a thread of its own, so what it reads is locked.
class CState {
public:
    CState() { ::InitializeCriticalSection(&m_lock); }
    CState(const CState&) = delete;
    CState& operator=(const CState&) = delete;

    template <class Action>
    auto Locked(Action action) {
        ::EnterCriticalSection(&m_lock);
        const auto result = action(*this);
        ::LeaveCriticalSection(&m_lock);
        return result;
    }

    HANDLE event = nullptr;
    bool isIgnored = false;

private:
    CRITICAL_SECTION m_lock;
};

CState& State() {
    // Never deleted: the system can call the handler until the process is gone.
    static CState& state = *new CState;
    return state;
}

void SetCancelEvent(HANDLE event) {
    State().Locked([event](CState& state) { return state.event = event; });
}

void SetIgnored(bool isIgnored) {
    State().Locked([isIgnored](CState& state) { return state.isIgnored = isIgnored; });
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
    switch (TakeConsoleEvent(event)) {
        case EventAnswer::GoOn:
            break;
        case EventAnswer::EndProgram:
            EndAsCanceled();
        case EventAnswer::AwaitEnd:
            ::Sleep(INFINITE);
    }
    return TRUE;
}

}  // namespace

CCancelable::CCancelable(HANDLE event) { SetCancelEvent(event); }
CCancelable::~CCancelable() { SetCancelEvent(nullptr); }

CUninterruptible::CUninterruptible() { SetIgnored(true); }
CUninterruptible::~CUninterruptible() { SetIgnored(false); }

void InstallInterruption() {
    (void)State();
    if (::SetConsoleCtrlHandler(&OnConsoleEvent, TRUE) == FALSE) return;  // Ctrl+C then ends the program
}

bool Interrupt() {
    return State().Locked([](const CState& state) {
        return state.isIgnored || (state.event != nullptr && ::SetEvent(state.event) != FALSE);
    });
}

EventAnswer TakeConsoleEvent(DWORD event) {
    // Whoever logs off: a process of SYSTEM is told of every user, and one of that user is ended anyway.
    if (event == CTRL_LOGOFF_EVENT) return EventAnswer::GoOn;
    if (!Interrupt()) return EventAnswer::EndProgram;
    return event == CTRL_CLOSE_EVENT || event == CTRL_SHUTDOWN_EVENT ? EventAnswer::AwaitEnd
                                                                     : EventAnswer::GoOn;
}

void EndAsCanceled() { ::ExitProcess(static_cast<UINT>(ExitCode::Canceled)); }
