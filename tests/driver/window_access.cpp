#include "tests/driver/window_access.h"

#include "tests/driver/wait.h"

namespace {

constexpr std::size_t kLongestText = 8191;

struct ProcessWindows {
    DWORD processId;
    std::vector<HWND> windows;
};

BOOL CALLBACK AddWindowOfProcess(HWND window, LPARAM lParam) {
    auto& found = *reinterpret_cast<ProcessWindows*>(lParam);
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    if (processId == found.processId && ::IsWindowVisible(window) != FALSE) found.windows.push_back(window);
    return TRUE;
}

}  // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    if (::SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, kPatience, &answer) != 0)
        return static_cast<LRESULT>(answer);
    if (::IsWindow(window) != FALSE)
        throw CDriverError("the program does not answer message " + std::to_string(message));
    return 0;
}

std::string TextOf(HWND window) {
    // One message only: between a question for the length and one for the text, the text may change.
    std::string text(kLongestText + 1, '\0');
    const LRESULT length = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string ClassOf(HWND window) {
    char name[256] = "";
    ::GetClassNameA(window, name, sizeof name);
    return name;
}

DWORD StyleOf(HWND window) { return static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)); }

bool HasClass(HWND window, const char* className) {
    return ::lstrcmpiA(ClassOf(window).c_str(), className) == 0;
}

std::vector<HWND> ChildrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

std::vector<HWND> TopWindowsOf(DWORD processId) {
    ProcessWindows found{processId, {}};
    ::EnumWindows(&AddWindowOfProcess, reinterpret_cast<LPARAM>(&found));
    return found.windows;
}

RECT ScreenRect(HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return rect;
}

RECT RectIn(HWND window, HWND parent) {
    RECT rect = ScreenRect(window);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

RECT ClientRect(HWND window) {
    RECT rect{};
    ::GetClientRect(window, &rect);
    return rect;
}
