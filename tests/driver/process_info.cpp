#include "tests/driver/process_info.h"

#include <tlhelp32.h>

#include <algorithm>

#include "platform/owners.h"
#include "tests/driver/wait.h"

namespace {

constexpr ULONG kSystemHandles = 16;
constexpr LONG kLengthMismatch = static_cast<LONG>(0xC0000004);

struct SystemHandle {
    ULONG processId;
    BYTE objectType;
    BYTE flags;
    USHORT value;
    void* object;
    ULONG access;
};

struct SystemHandleTable {
    ULONG count;
    SystemHandle handles[1];
};

using QuerySystemProc = LONG(WINAPI*)(ULONG kind, void* answer, ULONG bytes, ULONG* needed);

QuerySystemProc QuerySystem() {
    const HMODULE library = ::GetModuleHandleA("ntdll.dll");
    return reinterpret_cast<QuerySystemProc>(
        reinterpret_cast<void*>(::GetProcAddress(library, "NtQuerySystemInformation")));
}

CUniqueFile Snapshot(DWORD kind) {
    CUniqueFile snapshot(::CreateToolhelp32Snapshot(kind, 0));
    if (!snapshot) throw CDriverError("no snapshot of the system's processes");
    return snapshot;
}

}  // namespace

std::vector<DWORD> ThreadsOf(DWORD processId) {
    const CUniqueFile snapshot = Snapshot(TH32CS_SNAPTHREAD);
    std::vector<DWORD> threads;
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Thread32First(snapshot.Get(), &entry); more != FALSE;
         more = ::Thread32Next(snapshot.Get(), &entry))
        if (entry.th32OwnerProcessID == processId) threads.push_back(entry.th32ThreadID);
    return threads;
}

std::size_t HandleCountOf(DWORD processId) {
    // The call that counts a process's handles answers 0 on some systems; the table is always true.
    std::vector<char> buffer(1 << 16);
    const QuerySystemProc query = QuerySystem();
    LONG result = 0;
    while ((result = query(kSystemHandles, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr)) ==
           kLengthMismatch)
        buffer.resize(buffer.size() * 2);
    if (result != 0) throw CDriverError("the system does not tell its handles");
    const auto& table = *reinterpret_cast<const SystemHandleTable*>(buffer.data());
    const auto isOurs = [processId](const SystemHandle& handle) { return handle.processId == processId; };
    return static_cast<std::size_t>(std::count_if(table.handles, table.handles + table.count, isOurs));
}

std::vector<DWORD> ProcessesNamed(const std::string& fileName) {
    const CUniqueFile snapshot = Snapshot(TH32CS_SNAPPROCESS);
    std::vector<DWORD> processes;
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32First(snapshot.Get(), &entry); more != FALSE;
         more = ::Process32Next(snapshot.Get(), &entry))
        if (::lstrcmpiA(entry.szExeFile, fileName.c_str()) == 0) processes.push_back(entry.th32ProcessID);
    return processes;
}
