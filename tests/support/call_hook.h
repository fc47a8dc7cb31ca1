#pragma once

#include <windows.h>

/// Puts a function of the test into the place of one that this program imports by name, for a while.
class CCallHook {
public:
    /// @param replacement  of the same type as the imported function.
    CCallHook(const char* function, FARPROC replacement);
    CCallHook(const CCallHook&) = delete;
    CCallHook& operator=(const CCallHook&) = delete;
    ~CCallHook() { Write(m_before); }

    /// The imported function itself.
    [[nodiscard]] FARPROC Before() const { return m_before; }

private:
    void Write(FARPROC function);

    FARPROC* m_slot;
    FARPROC m_before;
};
