#include "framework/hyper_link.h"

#include "platform/host_services.h"

int CHyperLink::Navigate() const { return HasTarget() ? SystemActions().OpenWithShell(m_target.c_str()) : 0; }
