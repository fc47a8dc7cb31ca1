#include "platform/local_time.h"

#include <windows.h>

#include <cstdio>

std::string LocalTimeName() {
    // The system's clock and not the C library's, which trusts an environment variable about the zone.
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    if (now.wMonth == 0) return {};
    char name[48];
    const int length = std::snprintf(name, sizeof name, "%04u.%02u.%02u.%02u.%02u.%02u", now.wYear,
                                     now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
    return {name, static_cast<std::size_t>(length)};
}
