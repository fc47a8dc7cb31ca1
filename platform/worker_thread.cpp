#include "platform/worker_thread.h"

#include <process.h>

#include <memory>

namespace {

struct StartBlock {
    ThreadProc proc;
    void* parameter;
    int priority;
};

unsigned __stdcall ThreadMain(void* block) {
    const std::unique_ptr<StartBlock> start(static_cast<StartBlock*>(block));
    ::SetThreadPriority(::GetCurrentThread(), start->priority);
    return start->proc(start->parameter);
}

}  // namespace

CUniqueHandle BeginThread(ThreadProc proc, void* parameter, int priority) {
    auto block = std::make_unique<StartBlock>(StartBlock{proc, parameter, priority});
    // Not suspended at first: a thread that could not be resumed would be waited for without end.
    const auto started = ::_beginthreadex(nullptr, 0, &ThreadMain, block.get(), 0, nullptr);
    CUniqueHandle thread(reinterpret_cast<HANDLE>(started));
    if (!thread) return thread;
    (void)block.release();  // the thread frees it
    return thread;
}
