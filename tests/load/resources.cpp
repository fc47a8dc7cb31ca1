#include "tests/load/resources.h"

#include <windows.h>

#include <array>
#include <sstream>

#include "tests/driver/process_info.h"

namespace {

/// Counts what this process has of one kind, where the system tells it.
/// @param flags  GR_GDIOBJECTS or GR_USEROBJECTS.
std::size_t ToldBySystem(DWORD flags) { return ::GetGuiResources(::GetCurrentProcess(), flags); }

/// An entry of Wine's table of drawing objects, which every process has one of.
struct GdiEntry {
    unsigned long long object;
    unsigned owner;
    unsigned short unique;
    unsigned char type;  // 0: free
    unsigned char flags;
    unsigned long long userPointer;
};
static_assert(sizeof(GdiEntry) == 24);

constexpr std::size_t kGdiEntries = 0x4000;  // far more than a program may have

/// The table that the process's own block leads to.
const GdiEntry* GdiTable() {
#ifdef _WIN64
    constexpr std::size_t kTableAt = 0xF8;
    const auto block = reinterpret_cast<const char*>(__readgsqword(0x60));
#else
    constexpr std::size_t kTableAt = 0x94;
    const auto block = reinterpret_cast<const char*>(__readfsdword(0x30));
#endif
    return *reinterpret_cast<const GdiEntry* const*>(block + kTableAt);
}

std::size_t CountGdiObjects() {
    if (const std::size_t told = ToldBySystem(GR_GDIOBJECTS); told != 0) return told;
    const GdiEntry* table = GdiTable();
    std::size_t count = 0;
    for (std::size_t index = 0; table != nullptr && index < kGdiEntries; ++index)
        if (table[index].type != 0) ++count;
    return count;
}

/// Handles of windows, menus and icons have a number in their lower half, by which alone they may be named.
template <class Test>
std::size_t CountUserHandles(Test isOfThatKind) {
    constexpr std::size_t kFirst = 0x20;
    constexpr std::size_t kBehindLast = 0xFFF0;
    std::size_t count = 0;
    for (std::size_t number = kFirst; number < kBehindLast; number += 2)
        if (isOfThatKind(reinterpret_cast<void*>(number))) ++count;
    return count;
}

bool IsOurWindow(void* handle) {
    DWORD process = 0;
    return ::GetWindowThreadProcessId(static_cast<HWND>(handle), &process) != 0 &&
           process == ::GetCurrentProcessId();
}

bool IsIcon(void* handle) {
    ICONINFO info{};
    if (::GetIconInfo(static_cast<HICON>(handle), &info) == FALSE) return false;
    ::DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr) ::DeleteObject(info.hbmColor);
    return true;
}

std::size_t CountHeapBytes() {
    const HANDLE heap = ::GetProcessHeap();
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    ::HeapLock(heap);
    while (::HeapWalk(heap, &entry) != FALSE)
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    ::HeapUnlock(heap);
    return bytes;
}

}  // namespace

Resources Resources::OfThisProcess() {
    const DWORD process = ::GetCurrentProcessId();
    Resources now{};
    now.heapBytes = CountHeapBytes();  // first: the others allocate
    now.handles = HandleCountOf(process);
    now.threads = ThreadsOf(process).size();
    now.gdiObjects = CountGdiObjects();
    now.windows = CountUserHandles(IsOurWindow);
    now.menus = CountUserHandles([](void* handle) { return ::IsMenu(static_cast<HMENU>(handle)) != FALSE; });
    now.icons = CountUserHandles(IsIcon);
    return now;
}

std::string Resources::Text() const {
    std::ostringstream text;
    text << handles << " handles, " << threads << " threads, " << gdiObjects << " drawing objects, "
         << windows << " windows, " << menus << " menus, " << icons << " icons, " << heapBytes / 1024
         << " KB on the heap";
    return text.str();
}
