// The functions that can fail, each in the way that it fails by its documentation.

#include <windows.h>

#include <aclapi.h>
#include <process.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <tlhelp32.h>

#include <cstring>

#include "tests/faults/fault.h"

namespace {

constexpr DWORD kDenied[] = {ERROR_ACCESS_DENIED};
constexpr DWORD kRegistry[] = {ERROR_ACCESS_DENIED, ERROR_NOT_ENOUGH_MEMORY};
constexpr DWORD kSized[] = {ERROR_ACCESS_DENIED, ERROR_MORE_DATA};
constexpr DWORD kWriting[] = {ERROR_DISK_FULL};
constexpr DWORD kMemory[] = {ERROR_NOT_ENOUGH_MEMORY};
constexpr DWORD kHandle[] = {ERROR_INVALID_HANDLE};
constexpr DWORD kStatus[] = {0xC0000022};  // STATUS_ACCESS_DENIED

/// How the failure of a function shows.
enum class Shown { AsCode, AsLastError };

/// Stands in a function's place. @tparam Name  a type for each function.
template <class Name, class Type>
struct Stand;

template <class Name, class R, class... A>
struct StandBase {
    static inline FaultState state;
    static inline FARPROC before = nullptr;
    static inline Shown shown = Shown::AsLastError;
    static inline R failure{};
    static inline bool isNeverCalled = false;  // it would do harm
    static inline R pretended{};

    template <class Function>
    static R Answer(A... arguments) {
        if (const DWORD code = state.NextCall(); code != ERROR_SUCCESS) {
            if constexpr (std::is_integral_v<R>)
                if (shown == Shown::AsCode) return static_cast<R>(code);
            ::SetLastError(code);
            return failure;
        }
        if (isNeverCalled) return pretended;
        return reinterpret_cast<Function>(reinterpret_cast<void*>(before))(arguments...);
    }

    template <class Function>
    static FaultFunction Row(const char* name, Function* replacement, std::span<const DWORD> codes) {
        state.isRegistryCall = std::strncmp(name, "Reg", 3) == 0;
        return {name, reinterpret_cast<FARPROC>(reinterpret_cast<void*>(replacement)), &before, &state,
                codes};
    }
};

template <class Name, class R, class... A>
struct Stand<Name, R(WINAPI*)(A...)> : StandBase<Name, R, A...> {
    using Base = StandBase<Name, R, A...>;
    static R WINAPI Call(A... arguments) { return Base::template Answer<R(WINAPI*)(A...)>(arguments...); }
    static FaultFunction Code(const char* name, std::span<const DWORD> codes) {
        Base::shown = Shown::AsCode;
        return Base::Row(name, &Call, codes);
    }
    static FaultFunction Value(const char* name, R failure, std::span<const DWORD> codes) {
        Base::failure = failure;
        return Base::Row(name, &Call, codes);
    }
    static FaultFunction Pretend(const char* name, R failure, R pretended, std::span<const DWORD> codes) {
        Base::isNeverCalled = true;
        Base::pretended = pretended;
        return Value(name, failure, codes);
    }
};

#ifndef _WIN64  // where there is one way to call alone
template <class Name, class R, class... A>
struct Stand<Name, R(__cdecl*)(A...)> : StandBase<Name, R, A...> {
    using Base = StandBase<Name, R, A...>;
    static R __cdecl Call(A... arguments) { return Base::template Answer<R(__cdecl*)(A...)>(arguments...); }
    static FaultFunction Value(const char* name, R failure, std::span<const DWORD> codes) {
        Base::failure = failure;
        return Base::Row(name, &Call, codes);
    }
};
#endif

template <auto Function>
struct Named;
template <auto Function>
using StandFor = Stand<Named<Function>, decltype(Function)>;

struct DeleteKeyByHandle;
struct QueryKeyByHandle;

// A function's name twice: as itself, and as its import is called.
#define CODE(function, codes) StandFor<&::function>::Code(#function, codes)
#define VALUE(function, failure, codes) StandFor<&::function>::Value(#function, failure, codes)
#define PRETEND(function, failure, pretended, codes) \
    StandFor<&::function>::Pretend(#function, failure, pretended, codes)

std::vector<FaultFunction> RegistryFunctions() {
    return {
        CODE(RegOpenKeyA, kRegistry),
        CODE(RegOpenKeyExA, kRegistry),
        CODE(RegEnumKeyA, kRegistry),
        CODE(RegEnumKeyExA, kRegistry),
        CODE(RegEnumKeyExW, kRegistry),
        CODE(RegEnumValueA, kSized),
        CODE(RegQueryValueExA, kSized),
        CODE(RegQueryInfoKeyA, kRegistry),
        CODE(RegSetValueExA, kRegistry),
        CODE(RegDeleteKeyA, kRegistry),
        CODE(RegDeleteValueA, kRegistry),
        CODE(RegSaveKeyA, kWriting),
        CODE(RegReplaceKeyA, kDenied),
        CODE(RegSetKeySecurity, kDenied),
        CODE(SetNamedSecurityInfoA, kDenied),
        Stand<DeleteKeyByHandle, LONG(WINAPI*)(HANDLE)>::Code("NtDeleteKey", kStatus),
        Stand<QueryKeyByHandle, LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*)>::Code("NtQueryKey",
                                                                                        kStatus),
    };
}

std::vector<FaultFunction> SecurityFunctions() {
    return {
        VALUE(OpenProcessToken, FALSE, kDenied),
        VALUE(GetTokenInformation, FALSE, kDenied),
        VALUE(LookupPrivilegeValueA, FALSE, kDenied),
        VALUE(AdjustTokenPrivileges, FALSE, kDenied),
        VALUE(AllocateAndInitializeSid, FALSE, kMemory),
        VALUE(CheckTokenMembership, FALSE, kDenied),
        VALUE(InitializeAcl, FALSE, kMemory),
        VALUE(AddAccessAllowedAce, FALSE, kMemory),
        VALUE(InitializeSecurityDescriptor, FALSE, kMemory),
        VALUE(SetSecurityDescriptorOwner, FALSE, kMemory),
        VALUE(SetSecurityDescriptorDacl, FALSE, kMemory),
    };
}

std::vector<FaultFunction> FileFunctions() {
    return {
        VALUE(CreateFileA, INVALID_HANDLE_VALUE, kDenied),
        VALUE(ReadFile, FALSE, kHandle),
        VALUE(WriteFile, FALSE, kWriting),
        VALUE(SetFilePointerEx, FALSE, kHandle),
        VALUE(SetEndOfFile, FALSE, kWriting),
        VALUE(CopyFileA, FALSE, kWriting),
        VALUE(DeleteFileA, FALSE, kDenied),
        VALUE(CreateDirectoryA, FALSE, kWriting),
        VALUE(RemoveDirectoryA, FALSE, kDenied),
        VALUE(GetFileAttributesA, INVALID_FILE_ATTRIBUTES, kDenied),
        VALUE(GetFileAttributesExA, FALSE, kDenied),
        VALUE(SetFileAttributesA, FALSE, kDenied),
        VALUE(FindFirstFileA, INVALID_HANDLE_VALUE, kDenied),
        VALUE(FindNextFileA, FALSE, kMemory),
        VALUE(SearchPathA, 0, kDenied),
        VALUE(GetShortPathNameA, 0, kDenied),
        VALUE(PathFileExistsA, FALSE, kDenied),
        VALUE(PathAppendA, FALSE, kMemory),
        VALUE(GetWindowsDirectoryA, 0, kMemory),
        VALUE(GetModuleFileNameA, 0, kMemory),
        VALUE(QueryDosDeviceA, 0, kMemory),
        VALUE(ExpandEnvironmentStringsA, 0, kMemory),
        VALUE(SHGetFolderPathA, E_FAIL, kDenied),
        VALUE(SHGetSpecialFolderPathA, FALSE, kDenied),
    };
}

std::vector<FaultFunction> OtherFunctions() {
    return {
        VALUE(_beginthreadex, 0, kMemory),
        VALUE(SetThreadPriority, FALSE, kHandle),
        VALUE(CreateEventA, nullptr, kMemory),
        VALUE(WaitForSingleObject, WAIT_FAILED, kHandle),
        VALUE(MsgWaitForMultipleObjectsEx, WAIT_FAILED, kHandle),
        VALUE(PostMessageA, FALSE, kMemory),
        VALUE(OpenProcess, nullptr, kDenied),
        VALUE(CreateToolhelp32Snapshot, INVALID_HANDLE_VALUE, kMemory),
        VALUE(Process32First, FALSE, kHandle),
        VALUE(Process32Next, FALSE, kHandle),
        VALUE(MultiByteToWideChar, 0, kMemory),
        VALUE(WideCharToMultiByte, 0, kMemory),
        VALUE(FileTimeToSystemTime, FALSE, kMemory),
        PRETEND(TerminateProcess, FALSE, TRUE, kDenied),
        PRETEND(ExitWindowsEx, FALSE, TRUE, kDenied),
        PRETEND(WinExec, ERROR_FILE_NOT_FOUND, 33, kDenied),
        PRETEND(ShellExecuteA, nullptr, reinterpret_cast<HINSTANCE>(INT_PTR{33}), kDenied),
        PRETEND(MessageBoxA, 0, IDOK, kMemory),
    };
}

#undef CODE
#undef VALUE
#undef PRETEND

}  // namespace

const std::vector<FaultFunction>& FaultFunctions() {
    static const auto functions = [] {
        std::vector<FaultFunction> all;
        for (const auto& some : {RegistryFunctions(), SecurityFunctions(), FileFunctions(), OtherFunctions()})
            all.insert(all.end(), some.begin(), some.end());
        return all;
    }();
    return functions;
}
