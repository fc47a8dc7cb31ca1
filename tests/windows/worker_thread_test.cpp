#include "platform/worker_thread.h"

#include <doctest/doctest.h>

#include <atomic>

#include "tests/support/native_calls.h"

namespace {

struct Seen {
    int priority = 99;
    DWORD threadId = 0;
    std::size_t stackBytes = 0;
};

UINT LookAround(void* parameter) {
    auto* seen = static_cast<Seen*>(parameter);
    seen->priority = ::GetThreadPriority(::GetCurrentThread());
    seen->threadId = ::GetCurrentThreadId();
    MEMORY_BASIC_INFORMATION stack{};
    ::VirtualQuery(&stack, &stack, sizeof stack);
    const auto here = reinterpret_cast<ULONG_PTR>(&stack);
    seen->stackBytes = here - reinterpret_cast<ULONG_PTR>(stack.AllocationBase);
    return 1234;
}

std::atomic<int> g_finished = 0;

UINT FinishLater(void*) {
    ::Sleep(50);
    ++g_finished;
    return 0;
}

}  // namespace

TEST_CASE("a worker runs on a thread of its own with the given parameter, and its result is the exit code") {
    Seen seen;
    const CUniqueHandle thread = BeginThread(&LookAround, &seen, THREAD_PRIORITY_NORMAL);
    REQUIRE(static_cast<bool>(thread));
    REQUIRE(::WaitForSingleObject(thread.Get(), 5'000) == WAIT_OBJECT_0);
    DWORD exitCode = 0;
    ::GetExitCodeThread(thread.Get(), &exitCode);
    CHECK(exitCode == 1234);
    CHECK(seen.threadId != 0);
    CHECK(seen.threadId != ::GetCurrentThreadId());
}

TEST_CASE("a worker runs at the given priority") {
    for (int priority :
         {THREAD_PRIORITY_BELOW_NORMAL, THREAD_PRIORITY_NORMAL, THREAD_PRIORITY_ABOVE_NORMAL}) {
        Seen seen;
        const CUniqueHandle thread = BeginThread(&LookAround, &seen, priority);
        REQUIRE(::WaitForSingleObject(thread.Get(), 5'000) == WAIT_OBJECT_0);
        CHECK(seen.priority == priority);
    }
    CHECK(THREAD_PRIORITY_BELOW_NORMAL == -1);
}

TEST_CASE("a worker has the program's default stack, deep enough for a walk of the deepest tree") {
    Seen seen;
    const CUniqueHandle thread = BeginThread(&LookAround, &seen, THREAD_PRIORITY_NORMAL);
    REQUIRE(::WaitForSingleObject(thread.Get(), 5'000) == WAIT_OBJECT_0);
    CHECK(seen.stackBytes > 7 * 1024 * 1024);
}

TEST_CASE("a worker goes on when its handle is closed, and nothing of it is left open") {
    g_finished = 0;
    (void)BeginThread(&FinishLater, nullptr, THREAD_PRIORITY_NORMAL);
    for (int round = 0; round < 200 && g_finished == 0; ++round) ::Sleep(10);
    CHECK(g_finished == 1);
    ::Sleep(50);
    const std::size_t before = OwnHandles().size();
    for (int round = 0; round < 5; ++round) {
        const CUniqueHandle thread = BeginThread(&FinishLater, nullptr, THREAD_PRIORITY_NORMAL);
        REQUIRE(::WaitForSingleObject(thread.Get(), 5'000) == WAIT_OBJECT_0);
    }
    CHECK(OwnHandles().size() == before);
}
