#include "tests/faults/fault.h"

#include <list>
#include <stdexcept>

#include "tests/support/call_hook.h"

namespace {

// More than any work here needs of one function.
constexpr long kMostCalls = 60'000;

std::atomic<bool> g_isCounting = false;
std::atomic<bool> g_hasRunWild = false;

FARPROC g_getProcAddress = nullptr;
FARPROC g_sleep = nullptr;
FARPROC g_getTickCount = nullptr;
std::atomic<DWORD> g_skipped = 0;  // milliseconds that pauses would have lasted

void WINAPI SkipPause(DWORD milliseconds) {
    const bool isSkipped = g_isCounting;
    if (isSkipped) g_skipped += milliseconds;
    reinterpret_cast<decltype(&::Sleep)>(reinterpret_cast<void*>(g_sleep))(isSkipped ? 0 : milliseconds);
}

DWORD WINAPI ClockWithPauses() {
    return reinterpret_cast<decltype(&::GetTickCount)>(reinterpret_cast<void*>(g_getTickCount))() + g_skipped;
}

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

FARPROC WINAPI LookUp(HMODULE library, LPCSTR name) {
    const auto lookUp =
        reinterpret_cast<decltype(&::GetProcAddress)>(reinterpret_cast<void*>(g_getProcAddress));
    const FARPROC found = lookUp(library, name);
    if (found == nullptr || IS_INTRESOURCE(name)) return found;
    for (const FaultFunction& function : FaultFunctions()) {
        if (std::string(name) != function.name || CCallHook::IsImported(function.name)) continue;
        *function.before = found;
        return function.replacement;
    }
    return found;
}

/// In the places of all imported functions, from the first use to the program's end.
void InstallHooks() {
    static std::list<CCallHook> hooks;
    if (!hooks.empty()) return;
    for (const FaultFunction& function : FaultFunctions())
        if (CCallHook::IsImported(function.name))
            hooks.emplace_back(function.name, function.replacement, function.before);
    static const CCallHook pauses("Sleep", Address(&SkipPause), &g_sleep);
    static const CCallHook clock("GetTickCount", Address(&ClockWithPauses), &g_getTickCount);
}

}  // namespace

std::string Describe(const Fault& fault) {
    const std::string last = fault.last == kForEver ? "the last" : std::to_string(fault.last);
    return std::string(fault.function->name) + ", calls " + std::to_string(fault.first) + " to " + last +
           ", error " + std::to_string(fault.code);
}

DWORD FaultState::NextCall() {
    if (!g_isCounting) return ERROR_SUCCESS;
    const long call = ++calls;
    if (call > kMostCalls && isRegistryCall) {
        // Every walk takes this answer for its end.
        g_hasRunWild = true;
        return ERROR_INVALID_HANDLE;
    }
    return first != 0 && call >= first && call <= last ? code : ERROR_SUCCESS;
}

const FaultFunction& FaultFunctionNamed(const std::string& name) {
    for (const FaultFunction& function : FaultFunctions())
        if (name == function.name) return function;
    throw std::logic_error("no function to fail: " + name);
}

void HookLookups() { static const CCallHook hook("GetProcAddress", Address(&LookUp), &g_getProcAddress); }

CFaultInForce::CFaultInForce(const Fault* fault) {
    InstallHooks();
    for (const FaultFunction& function : FaultFunctions()) {
        function.state->calls = 0;
        function.state->first = 0;
    }
    if (fault != nullptr) {
        FaultState& state = *fault->function->state;
        state.first = fault->first;
        state.last = fault->last;
        state.code = fault->code;
    }
    g_hasRunWild = false;
    g_isCounting = true;
}

CFaultInForce::~CFaultInForce() { g_isCounting = false; }

bool HasRunWild() { return g_hasRunWild; }
