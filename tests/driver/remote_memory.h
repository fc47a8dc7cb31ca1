#pragma once

#include <windows.h>

#include <cstddef>

/// Memory inside another process, for messages whose parameters point to structures: the address has to be
/// one of the process that handles the message.
class CRemoteMemory {
public:
    /// @param process  borrowed; must outlive this object.
    CRemoteMemory(HANDLE process, std::size_t bytes);
    CRemoteMemory(const CRemoteMemory&) = delete;
    CRemoteMemory& operator=(const CRemoteMemory&) = delete;
    ~CRemoteMemory();

    /// An address in the other process, as a message takes it.
    [[nodiscard]] LPARAM Address(std::size_t offset = 0) const;
    void WriteBytes(std::size_t offset, const void* bytes, std::size_t count) const;
    void ReadBytes(std::size_t offset, void* bytes, std::size_t count) const;

    template <class T>
    void Write(const T& value, std::size_t offset = 0) const {
        WriteBytes(offset, &value, sizeof value);
    }
    template <class T>
    [[nodiscard]] T Read(std::size_t offset = 0) const {
        T value{};
        ReadBytes(offset, &value, sizeof value);
        return value;
    }

private:
    HANDLE m_process;
    char* m_base;
};
