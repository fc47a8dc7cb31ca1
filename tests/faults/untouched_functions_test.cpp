#include <doctest/doctest.h>

#include "tests/faults/fault_runs.h"

// Tests run in the order of their files' names, this one last.
TEST_CASE("every function that can be made to fail has been") {
    if (FunctionsMadeToFail().empty()) return;  // the other tests were left out by hand
    for (const FaultFunction& function : FaultFunctions())
        CHECK_MESSAGE(FunctionsMadeToFail().contains(function.name), std::string(function.name));
}
