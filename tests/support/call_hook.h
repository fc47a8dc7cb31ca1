#pragma once

#include <windows.h>

/// Puts a function of the test into the place of one that this program imports by name, for a while.
class CCallHook {
public:
    /// @param replacement  of the same type as the imported function.
    /// @throws std::logic_error when this program imports none of that name.
    /// @param before  receives the imported function, before the replacement can be called; may be null.
    CCallHook(const char* function, FARPROC replacement, FARPROC* before = nullptr);
    CCallHook(const CCallHook&) = delete;
    CCallHook& operator=(const CCallHook&) = delete;
    ~CCallHook() { Write(m_before); }

    /// Whether this program imports a function of that name.
    [[nodiscard]] static bool IsImported(const char* function);

    /// The same, of one library, as in "kernel32.dll".
    [[nodiscard]] static bool IsImportedFrom(const char* function, const char* library);

    /// The imported function itself.
    [[nodiscard]] FARPROC Before() const { return m_before; }

private:
    void Write(FARPROC function);

    FARPROC* m_slot;
    FARPROC m_before;
};
