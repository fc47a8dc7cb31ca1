#include "tests/support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> g_allocations = 0;
std::atomic<long> g_freed = 0;

void Free(void* memory) noexcept {
    if (memory != nullptr) ++g_freed;
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }

long AllocationCount() { return g_allocations; }

long LiveAllocations() { return g_allocations - g_freed; }
