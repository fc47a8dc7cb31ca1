#include "benchmark/counts.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "benchmark/registry_maker.h"
#include "benchmark/walks.h"
#include "platform/owners.h"
#include "tests/support/call_counter.h"

namespace {

std::atomic<long> g_allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

Counts CountDeepScan() {
    CUniqueKey key;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kScratchKey, 0, KEY_READ, key.Receive()) != ERROR_SUCCESS)
        return {};
    const TreeSize size = CountTree(key.Get());
    const auto keys = static_cast<double>(size.keys);
    const auto values = static_cast<double>(size.values);

    using Kind = CCallCounter::Kind;
    const CCallCounter counter;
    const long before = g_allocations;
    RunDeepScan();
    const long allocations = g_allocations - before;
    Counts counts;
    counts["keys"] = keys;
    counts["values"] = values;
    counts["rows"] = static_cast<double>(RowsOfDeepScan());
    counts["registry_calls"] = static_cast<double>(CCallCounter::Calls(Kind::Registry));
    // What walking itself needs: each index of values and subkeys, the one behind the last included, and the
    // opening and closing of each key.
    counts["registry_calls_of_walk"] = values + keys + (keys - 1) + keys + 2 * keys;
    counts["value_enumerations_per_value"] =
        static_cast<double>(CCallCounter::CallsTo("RegEnumValueA")) / values;
    counts["sends_per_value"] = static_cast<double>(CCallCounter::Calls(Kind::Send)) / values;
    counts["waits_per_value"] = static_cast<double>(CCallCounter::Calls(Kind::Wait)) / values;
    counts["file_calls_per_value"] = static_cast<double>(CCallCounter::Calls(Kind::File)) / values;
    counts["allocations_per_value"] = static_cast<double>(allocations) / values;
    for (const Kind kind : {Kind::Registry, Kind::Send, Kind::Wait, Kind::File})
        for (const CallCount& call : CCallCounter::CallsOf(kind))
            counts["calls_" + call.function] = static_cast<double>(call.calls);
    return counts;
}
