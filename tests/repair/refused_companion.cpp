#include "tests/repair/refused_companion.h"

#include <string_view>

namespace {

int g_openedLeft = 0;
int g_refusedLeft = 0;
decltype(&::CreateFileA) g_open = nullptr;

HANDLE WINAPI OpenAnyOther(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                           DWORD opening, DWORD flags, HANDLE pattern) {
    const bool isCompanion = std::string_view(name).ends_with(".branches");
    if (!isCompanion || g_openedLeft-- > 0 || g_refusedLeft-- <= 0)
        return g_open(name, access, share, security, opening, flags, pattern);
    ::SetLastError(ERROR_SHARING_VIOLATION);
    return INVALID_HANDLE_VALUE;
}

}  // namespace

CRefusedCompanion::CRefusedCompanion(int times, int after)
    : m_hook("CreateFileA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&OpenAnyOther)),
             reinterpret_cast<FARPROC*>(&g_open)) {
    g_refusedLeft = times;
    g_openedLeft = after;
}
