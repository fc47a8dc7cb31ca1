#pragma once

#include <windows.h>

#include <atomic>
#include <climits>
#include <span>
#include <string>
#include <vector>

/// One function of the system that can be made to fail, with what stands in its place.
struct FaultFunction {
    const char* name;
    FARPROC replacement;
    FARPROC* before;               // the function itself, once the replacement is in its place
    struct FaultState* state;      // of the replacement
    std::span<const DWORD> codes;  // the errors that it is made to fail with
};

/// Which calls of a function fail, counted from 1 over all threads, and how.
struct Fault {
    const FaultFunction* function;
    long first;
    long last;
    DWORD code;
};

constexpr long kForEver = LONG_MAX;

/// As in "RegOpenKeyExA, calls 3 to 3, error 5".
[[nodiscard]] std::string Describe(const Fault& fault);

/// What a replacement counts and is told.
struct FaultState {
    std::atomic<long> calls = 0;
    long first = 0;  // none fails: 0
    long last = 0;
    DWORD code = ERROR_SUCCESS;
    bool isRegistryCall = false;

    /// Counts a call while faults are counted. @return the error that it fails with; ERROR_SUCCESS: it does
    /// not fail.
    [[nodiscard]] DWORD NextCall();
};

/// The functions that the engine calls and that can fail.
[[nodiscard]] const std::vector<FaultFunction>& FaultFunctions();
[[nodiscard]] const FaultFunction& FaultFunctionNamed(const std::string& name);

/// The replacements of the functions that are reached through GetProcAddress, which the engine remembers for
/// ever; to be called before anything else.
void HookLookups();

/// Counts calls, and lets some fail, while it lives; only one can live at a time. A pause lasts no time then,
/// but the clock goes on as if it did.
class CFaultInForce {
public:
    /// @param fault  null: all calls go through.
    explicit CFaultInForce(const Fault* fault);
    CFaultInForce(const CFaultInForce&) = delete;
    CFaultInForce& operator=(const CFaultInForce&) = delete;
    ~CFaultInForce();
};

/// Whether the last work had to be ended because it made calls without end.
[[nodiscard]] bool HasRunWild();
