#pragma once

#include <windows.h>

#include "platform/owners.h"

/// What a stage thread is started with. No stage reads it: its starter owns it and destroys it, which for
/// every stage but the first happens as soon as the thread runs.
class CParameter {
public:
    CParameter() : m_event(::CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}
    CParameter(const CParameter&) = delete;
    CParameter& operator=(const CParameter&) = delete;
    virtual ~CParameter() = default;

private:
    CUniqueHandle m_event;  // manual-reset, not signalled, unnamed
};
