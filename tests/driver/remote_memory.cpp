#include "tests/driver/remote_memory.h"

#include "tests/driver/wait.h"

CRemoteMemory::CRemoteMemory(HANDLE process, std::size_t bytes)
    : m_process(process),
      m_base(static_cast<char*>(
          ::VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))) {
    if (m_base == nullptr) throw CDriverError("no memory in the program");
}

CRemoteMemory::~CRemoteMemory() { ::VirtualFreeEx(m_process, m_base, 0, MEM_RELEASE); }

LPARAM CRemoteMemory::Address(std::size_t offset) const { return reinterpret_cast<LPARAM>(m_base + offset); }

void CRemoteMemory::WriteBytes(std::size_t offset, const void* bytes, std::size_t count) const {
    if (::WriteProcessMemory(m_process, m_base + offset, bytes, count, nullptr) == FALSE)
        throw CDriverError("the program's memory cannot be written");
}

void CRemoteMemory::ReadBytes(std::size_t offset, void* bytes, std::size_t count) const {
    if (::ReadProcessMemory(m_process, m_base + offset, bytes, count, nullptr) == FALSE)
        throw CDriverError("the program's memory cannot be read");
}
