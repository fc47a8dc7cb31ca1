#include "tests/ui/shell.h"

#include <doctest/doctest.h>

#include <map>

namespace {

std::map<UINT_PTR, std::function<void()>>& Pending() {
    static std::map<UINT_PTR, std::function<void()>> pending;
    return pending;
}

void CALLBACK RunPending(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const auto found = Pending().find(timer);
    if (found == Pending().end()) return;
    const std::function<void()> act = found->second;
    Pending().erase(found);
    act();
}

}  // namespace

CShell::CShell() { REQUIRE(InitInstance()); }

CShell::~CShell() {
    ::DestroyWindow(FrameWindow());
    PumpMessages();  // the WM_QUIT of the closed window must not reach the next test
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    }
}

void CShell::SendRow(const char* key, const char* time, const char* name, const char* data) const {
    g_analysisChannel.pszInvalidKey = key;
    g_analysisChannel.pszWriteTime = time;
    g_analysisChannel.pszValueName = name;
    g_analysisChannel.pszDataReference = data;
    ::SendMessageA(ListWindow(), WM_ANALYZE_ROW, 0, 0);
}

void CShell::AddRows(int count) const {
    for (int row = 0; row < count; ++row)
        SendRow((R"(\HKEY_CURRENT_USER\row)" + std::to_string(row)).c_str(), "2009/03/05 07:08:09", "name",
                "data");
    Frame().OnIdle();
}

std::string CShell::Pane(int index) const {
    char text[512] = "";
    ::SendMessageA(StatusBar(), SB_GETTEXTA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
    return text;
}

void PumpMessages() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

void After(UINT milliseconds, std::function<void()> act) {
    const UINT_PTR timer = ::SetTimer(nullptr, 0, milliseconds, &RunPending);
    Pending()[timer] = std::move(act);
}

void AsSoonAs(std::function<bool()> ready, std::function<void()> act) {
    constexpr UINT kPollPeriod = 20;  // milliseconds
    After(kPollPeriod,
          [ready = std::move(ready), act = std::move(act)] { ready() ? act() : AsSoonAs(ready, act); });
}

std::string WindowText(HWND window) {
    char text[2048] = "";
    ::GetWindowTextA(window, text, sizeof text);
    return text;
}
