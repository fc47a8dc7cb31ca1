#include "tests/support/call_counter.h"

#include <windows.h>

#include <shlwapi.h>

#include <array>
#include <atomic>
#include <optional>

#include "tests/support/call_hook.h"

namespace {

using Kind = CCallCounter::Kind;

struct Counted {
    Kind kind;
    const char* name;
    FARPROC replacement;
    std::atomic<long>* calls;
    FARPROC* before;
};

/// Stands in the place of an imported function: counts, and calls it.
template <auto Function, class Type = decltype(Function)>
struct Count;
template <auto Function, class R, class... A>
struct Count<Function, R(WINAPI*)(A...)> {
    static R WINAPI Call(A... arguments) {
        ++calls;
        return reinterpret_cast<R(WINAPI*)(A...)>(reinterpret_cast<void*>(before))(arguments...);
    }
    static inline std::atomic<long> calls = 0;
    static inline FARPROC before = nullptr;

    static Counted Row(Kind kind, const char* name) {
        return {kind, name, reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Call)), &calls, &before};
    }
};

// A function's name twice: as itself, and as its import is called.
#define COUNTED(kind, function) Count<&::function>::Row(Kind::kind, #function)

const auto& AllCounted() {
    static const auto counted = std::to_array<Counted>({
        COUNTED(Registry, RegOpenKeyA),
        COUNTED(Registry, RegOpenKeyExA),
        COUNTED(Registry, RegEnumKeyExA),
        COUNTED(Registry, RegEnumValueA),
        COUNTED(Registry, RegQueryValueExA),
        COUNTED(Registry, RegQueryInfoKeyA),
        COUNTED(Registry, RegCloseKey),
        COUNTED(Send, SendMessageA),
        COUNTED(Wait, WaitForSingleObject),
        COUNTED(File, GetFileAttributesA),
        COUNTED(File, SearchPathA),
        COUNTED(File, GetShortPathNameA),
        COUNTED(File, PathFileExistsA),
        COUNTED(Folder, ExpandEnvironmentStringsA),
        COUNTED(Folder, GetWindowsDirectoryA),
    });
    return counted;
}

#undef COUNTED

std::vector<std::optional<CCallHook>>& Hooks() {
    static std::vector<std::optional<CCallHook>> hooks;
    return hooks;
}

}  // namespace

CCallCounter::CCallCounter() {
    Hooks() = std::vector<std::optional<CCallHook>>(AllCounted().size());
    for (std::size_t index = 0; index < AllCounted().size(); ++index) {
        const Counted& counted = AllCounted()[index];
        *counted.calls = 0;
        if (!CCallHook::IsImported(counted.name)) continue;
        Hooks()[index].emplace(counted.name, counted.replacement, counted.before);
    }
}

CCallCounter::~CCallCounter() { Hooks().clear(); }

long CCallCounter::Calls(Kind kind) {
    long calls = 0;
    for (const CallCount& count : CallsOf(kind)) calls += count.calls;
    return calls;
}

std::vector<CallCount> CCallCounter::CallsOf(Kind kind) {
    std::vector<CallCount> counts;
    for (const Counted& counted : AllCounted())
        if (counted.kind == kind && *counted.calls > 0) counts.push_back({counted.name, *counted.calls});
    return counts;
}

long CCallCounter::CallsTo(const char* function) {
    for (const Counted& counted : AllCounted())
        if (counted.name == std::string(function)) return *counted.calls;
    return 0;
}
