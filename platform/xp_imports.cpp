// The thread library that the compiler's run-time rests on imports GetTickCount64, which Windows XP lacks:
// the program would not even start there. This defines the import's own symbol, so the linker asks the system
// for none. The function is looked up at run time; without it the 32-bit count serves, and what it is used
// for (waits with a time limit) bears its wrap after 49 days.

#include <windows.h>

namespace {

using TickCountProc = ULONGLONG(WINAPI*)();

ULONGLONG WINAPI TickCount() {
    static const auto newer = reinterpret_cast<TickCountProc>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "GetTickCount64")));
    return newer != nullptr ? newer() : ::GetTickCount();
}

}  // namespace

#ifdef _WIN64
#define IMPORTED_GET_TICK_COUNT_64 "__imp_GetTickCount64"
#else
#define IMPORTED_GET_TICK_COUNT_64 "__imp__GetTickCount64@0"
#endif

extern "C" {
extern const TickCountProc kImportedGetTickCount64 __asm__(IMPORTED_GET_TICK_COUNT_64);
const TickCountProc kImportedGetTickCount64 = &TickCount;
}
