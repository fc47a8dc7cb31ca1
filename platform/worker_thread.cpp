#include "platform/worker_thread.h"

#include <process.h>

#include <memory>

namespace {

struct StartBlock {
    ThreadProc proc;
    void* parameter;
};

unsigned __stdcall ThreadMain(void* block) {
    const std::unique_ptr<StartBlock> start(static_cast<StartBlock*>(block));
    return start->proc(start->parameter);
}

}  // namespace

CUniqueHandle BeginThread(ThreadProc proc, void* parameter, int priority) {
    auto block = std::make_unique<StartBlock>(StartBlock{proc, parameter});
    const auto started = ::_beginthreadex(nullptr, 0, &ThreadMain, block.get(), CREATE_SUSPENDED, nullptr);
    CUniqueHandle thread(reinterpret_cast<HANDLE>(started));
    if (!thread) return thread;
    (void)block.release();  // the thread frees it
    ::SetThreadPriority(thread.Get(), priority);
    ::ResumeThread(thread.Get());
    return thread;
}
