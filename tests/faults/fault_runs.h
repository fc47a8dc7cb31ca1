#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/faults/fault.h"

/// What is wrong after a run, in words.
using Complaints = std::vector<std::string>;

/// One run of some work, of which calls may fail.
class CFaultRun {
public:
    /// @param fault  null: no call fails.
    explicit CFaultRun(const Fault* fault) : m_fault(fault) {}

    /// Does the work with the fault in force. To be called once.
    void During(const std::function<void()>& work);

    [[nodiscard]] bool HasFault() const { return m_fault != nullptr; }
    /// Whether one of these functions fails in this run.
    [[nodiscard]] bool IsFaultOf(std::initializer_list<const char*> functions) const;

    /// Whether it is one call alone of a function that fails.
    [[nodiscard]] bool FailsOnce(const char* function) const {
        return IsFaultOf({function}) && m_fault->first == m_fault->last;
    }

    /// Whether the first call of one of these functions fails.
    [[nodiscard]] bool FailsFirst(std::initializer_list<const char*> functions) const {
        return IsFaultOf(functions) && m_fault->first == 1;
    }

    void Demand(bool isTrue, const std::string& complaint) {
        if (!isTrue) m_complaints.push_back(complaint);
    }
    [[nodiscard]] const Complaints& All() const { return m_complaints; }

private:
    const Fault* m_fault;
    Complaints m_complaints;
};

/// Makes what the work needs, does it once in CFaultRun::During, demands what must be true afterwards, and
/// takes everything away again.
using FaultScenario = std::function<void(CFaultRun& run)>;

/// Runs a scenario without faults, and then once with each fault of the functions that it called: the first
/// three calls, a middle one and the last one alone, and all calls from the first on. After each run no
/// handle and no memory may be left, and no call may have been repeated without end.
void RunWithFaults(const char* title, const FaultScenario& scenario);

/// The functions that some scenario has called by now.
[[nodiscard]] const std::set<std::string>& FunctionsMadeToFail();
