#pragma once

#include <windows.h>

/// Shows the hourglass while it lives, then the cursor that was shown before.
class CWaitCursor {
public:
    CWaitCursor() : m_before(::SetCursor(::LoadCursorA(nullptr, IDC_WAIT))) {}
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor() { ::SetCursor(m_before); }

private:
    HCURSOR m_before;
};
