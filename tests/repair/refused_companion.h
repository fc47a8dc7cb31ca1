#pragma once

#include <windows.h>

#include "tests/support/call_hook.h"

/// The companions of undo files, and no other files, cannot be opened or made while it lives.
class CRefusedCompanion {
public:
    static constexpr int kAlways = 1'000'000;

    /// @param times  how often one is refused.
    /// @param after  how often one is opened before that.
    explicit CRefusedCompanion(int times = kAlways, int after = 0);

private:
    CCallHook m_hook;
};
