#include "tests/faults/fault_runs.h"

#include <windows.h>

#include <doctest/doctest.h>
#include <mmsystem.h>

#include <algorithm>
#include <cstdio>
#include <map>

#include "tests/faults/watchdog.h"
#include "tests/support/allocation_count.h"
#include "tests/support/native_calls.h"

namespace {

std::set<std::string>& MadeToFail() {
    static std::set<std::string> functions;
    return functions;
}

/// What the process holds. Counting the handles allocates nothing that stays.
struct Holdings {
    std::size_t handles = OwnHandles().size();
    long memory = LiveAllocations();

    [[nodiscard]] std::string MoreThan(const Holdings& before) const {
        std::string more;
        if (handles > before.handles) more += std::to_string(handles - before.handles) + " handles ";
        if (memory > before.memory) more += std::to_string(memory - before.memory) + " blocks of memory ";
        return more;
    }
};

std::string RunOnce(const FaultScenario& scenario, const Fault* fault) {
    CFaultRun run(fault);
    try {
        scenario(run);
    } catch (const std::exception& problem) {
        run.Demand(false, std::string("the scenario itself broke: ") + problem.what());
    }
    std::string text;
    for (const std::string& complaint : run.All()) text += complaint + "; ";
    return text;
}

/// What a run leaves behind. The first time, something may be made that stays for good reason.
std::string RunTwiceIfLeaking(const FaultScenario& scenario, const Fault& fault) {
    std::string left;
    for (int round = 0; round < 3; ++round) {
        const Holdings before;
        const std::string complaints = RunOnce(scenario, &fault);
        if (!complaints.empty()) return complaints;
        left = Holdings().MoreThan(before);
        if (left.empty()) return {};
    }
    return left + "are left behind";
}

std::vector<Fault> FaultsOf(const FaultFunction& function, long calls) {
    std::vector<Fault> faults;
    for (const long call : std::set<long>{1, 2, 3, calls / 2, calls})
        if (call >= 1 && call <= calls) faults.push_back({&function, call, call, function.codes.front()});
    for (const DWORD code : function.codes) faults.push_back({&function, 1, kForEver, code});
    return faults;
}

/// Each function's calls of a run in which none fails.
std::map<const FaultFunction*, long> CountCalls(const FaultScenario& scenario) {
    CHECK(RunOnce(scenario, nullptr) == "");  // the first time, the system makes what stays
    CHECK(RunOnce(scenario, nullptr) == "");
    std::map<const FaultFunction*, long> calls;
    for (const FaultFunction& function : FaultFunctions())
        if (function.state->calls > 0) calls[&function] = function.state->calls;
    return calls;
}

}  // namespace

void CFaultRun::During(const std::function<void()>& work) {
    const CFaultInForce inForce(m_fault);
    try {
        work();
    } catch (const std::exception& problem) {
        Demand(false, std::string("an exception came out: ") + problem.what());
    }
    Demand(!HasRunWild(), "a walk did not end");
}

bool CFaultRun::IsFaultOf(std::initializer_list<const char*> functions) const {
    return m_fault != nullptr && std::ranges::any_of(functions, [this](const char* name) {
               return std::string(name) == m_fault->function->name;
           });
}

void RunWithFaults(const char* title, const FaultScenario& scenario) {
    const DWORD start = ::timeGetTime();
    const std::map<const FaultFunction*, long> counted = CountCalls(scenario);
    long faults = 0;
    long allCalls = 0;
    for (const auto& [function, calls] : counted) allCalls += calls;
    for (const auto& [function, calls] : counted) {
        MadeToFail().insert(function->name);
        for (const Fault& fault : FaultsOf(*function, calls)) {
            const CWatched watched(std::string(title) + ": " + Describe(fault));
            const std::string complaints = RunTwiceIfLeaking(scenario, fault);
            CHECK_MESSAGE(complaints.empty(), Describe(fault), ": ", complaints);
            ++faults;
        }
    }
    CHECK(RunOnce(scenario, nullptr) == "");  // no failure is remembered
    std::printf("%s: %d functions, %ld calls, %ld faults, %lu ms\n", title, static_cast<int>(counted.size()),
                allCalls, faults, ::timeGetTime() - start);
}

const std::set<std::string>& FunctionsMadeToFail() { return MadeToFail(); }
