#include "benchmark/counts.h"

#include <windows.h>

#include "analysis/check.h"
#include "benchmark/registry_maker.h"
#include "benchmark/walks.h"
#include "platform/owners.h"
#include "tests/support/allocation_count.h"
#include "tests/support/call_counter.h"

namespace {

using Kind = CCallCounter::Kind;

constexpr struct {
    Kind kind;
    const char* name;
} kKinds[] = {{Kind::Registry, "registry_calls"},
              {Kind::Send, "sends"},
              {Kind::Wait, "waits"},
              {Kind::File, "file_calls"}};

}  // namespace

Counts CountDeepScan() {
    CUniqueKey key;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kScratchKey, 0, KEY_READ, key.Receive()) != ERROR_SUCCESS)
        return {};
    const TreeSize size = CountTree(key.Get());
    const auto keys = static_cast<double>(size.keys);
    const auto values = static_cast<double>(size.values);

    const CCallCounter counter;
    const long before = AllocationCount();
    RunDeepScan();
    const long allocations = AllocationCount() - before;
    Counts counts;
    counts["keys"] = keys;
    counts["values"] = values;
    counts["rows"] = static_cast<double>(RowsOfDeepScan());
    // What walking itself needs: each index of values and subkeys, the one behind the last included, and the
    // opening and closing of each key.
    counts["registry_calls_of_walk"] = values + keys + (keys - 1) + keys + 2 * keys;
    counts["value_enumerations_per_value"] =
        static_cast<double>(CCallCounter::CallsTo("RegEnumValueA")) / values;
    counts["allocations_per_value"] = static_cast<double>(allocations) / values;
    for (const auto& [kind, name] : kKinds) {
        const auto calls = static_cast<double>(CCallCounter::Calls(kind));
        counts[name] = calls;
        counts[std::string(name) + "_per_key"] = calls / keys;
        counts[std::string(name) + "_per_value"] = calls / values;
        for (const CallCount& call : CCallCounter::CallsOf(kind))
            counts["calls_" + call.function] = static_cast<double>(call.calls);
    }
    return counts;
}

Counts CountAnalysis() {
    Counts counts;
    for (const Check& check : AllChecks()) {
        const CCallCounter counter;
        RunAsWorker(check.run);
        for (const auto& [kind, name] : kKinds) {
            const auto calls = static_cast<double>(CCallCounter::Calls(kind));
            counts[std::string(name) + "_of_" + check.name] = calls;
            counts[std::string(name) + "_of_all_checks"] += calls;
        }
    }
    return counts;
}
