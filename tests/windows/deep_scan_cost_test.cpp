#include <doctest/doctest.h>

#include "analysis/channel.h"
#include "analysis/deep_scan.h"
#include "registry/registry_access.h"
#include "tests/support/allocation_count.h"
#include "tests/support/call_counter.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

// What a scan costs is decided by the calls that it makes, whose number does not depend on the machine.

namespace {

using Kind = CCallCounter::Kind;

constexpr int kKeys = 5;
constexpr int kValuesPerKey = 40;

/// A tree of a key with subkeys, all with the same number of values.
struct Fixture {
    Fixture() {
        for (int key = 0; key < kKeys; ++key) subkeys.push_back(scratch.Add("sub" + std::to_string(key)));
    }
    void Fill(const std::string& text, DWORD type = REG_SZ) const {
        for (const HKEY subkey : subkeys)
            for (int value = 0; value < kValuesPerKey; ++value)
                SetText(subkey, "value" + std::to_string(value), text, type);
    }
    CScratchKey scratch;
    std::vector<HKEY> subkeys;
};

/// Receives nothing: what a window would do with the messages is not counted.
struct Cost {
    explicit Cost(const Fixture& fixture) {
        const AnalysisChannel before = g_analysisChannel;
        const CUniqueHandle never(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
        g_analysisChannel.hViewWnd = nullptr;
        g_analysisChannel.hCancelEvent = never.Get();
        {
            const CCallCounter counter;
            const long allocated = AllocationCount();
            ScanHiveForDeadFiles(fixture.scratch.Get(), fixture.scratch.Path().c_str());
            allocations = AllocationCount() - allocated;
            registry = CCallCounter::Calls(Kind::Registry);
            enumerations = CCallCounter::CallsTo("RegEnumValueA");
            sends = CCallCounter::Calls(Kind::Send);
            waits = CCallCounter::Calls(Kind::Wait);
            files = CCallCounter::Calls(Kind::File);
            expansions = CCallCounter::CallsTo("ExpandEnvironmentStringsA");
        }
        g_analysisChannel = before;
    }
    long registry, enumerations, sends, waits, files, expansions, allocations;
};

constexpr long kValues = kKeys * kValuesPerKey;
constexpr long kAllKeys = kKeys + 1;

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a value costs one enumeration, one wait and one send, and nothing else") {
    for (const char* text : {"", "some words", "{00020424-0000-0000-C000-000000000046}", "C:relative"}) {
        CAPTURE(std::string(text));
        Fill(text);
        const Cost cost(*this);
        CHECK(cost.enumerations == kValues + kAllKeys);  // and one behind the last of each key
        // Besides, each subkey is enumerated, opened and closed, and each key's subkeys end once.
        CHECK(cost.registry == cost.enumerations + 3 * kKeys + kAllKeys);
        CHECK(cost.sends == kValues + kAllKeys);
        CHECK(cost.waits == kValues + kAllKeys);
        CHECK(cost.files == 0);
        CHECK(cost.allocations == 0);
    }
}

TEST_CASE_FIXTURE(Fixture, "a path that exists costs one file test, and no allocation") {
    Fill(R"(C:\windows\system32\kernel32.dll)");
    const Cost cost(*this);
    CHECK(cost.registry == kValues + kAllKeys + 3 * kKeys + kAllKeys);
    CHECK(cost.files == kValues);
    CHECK(cost.allocations == 0);
}

TEST_CASE_FIXTURE(Fixture,
                  "a folder variable is asked for once in a scan, and costs no allocation for a value") {
    Fill(R"(%windir%\system32\kernel32.dll)", REG_EXPAND_SZ);
    const Cost cost(*this);
    CHECK(cost.expansions == 1);
    CHECK(cost.files == kValues);
    CHECK(cost.allocations <= 2);  // what is remembered of the variable
}
