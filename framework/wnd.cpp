#include "framework/wnd.h"

#include <commctrl.h>

#include <algorithm>
#include <map>

namespace {

/// Whether a WM_COMMAND comes from a menu, an accelerator or a button, and is no control's other
/// notification.
bool IsCommand(WPARAM wParam, LPARAM lParam) { return lParam == 0 || HIWORD(wParam) == BN_CLICKED; }

template <class Row, class Key, class Field>
const Row* FindRow(std::span<const Row> rows, Key key, Field field) {
    for (const Row& row : rows)
        if (row.*field == key) return &row;
    return nullptr;
}

/// The objects behind our windows. Kept here and not in the windows, whose own slots belong to their classes;
/// only the user-interface thread has windows.
std::map<HWND, CWnd*>& Windows() {
    static std::map<HWND, CWnd*> windows;
    return windows;
}

}  // namespace

CWnd::~CWnd() {
    if (m_hwnd != nullptr) ::DestroyWindow(m_hwnd);
}

CWnd* CWnd::FromHandle(HWND window) {
    const auto found = Windows().find(window);
    return found != Windows().end() ? found->second : nullptr;
}

void CWnd::Attach(HWND window) {
    m_hwnd = window;
    Windows()[window] = this;
}

const char* CWnd::RegisterWindowClass(const char* name, HICON icon, HBRUSH background) {
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &WindowProc;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.hIcon = icon;
    windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    ::RegisterClassExA(&windowClass);  // a second registration fails and leaves the first in place
    return name;
}

bool CWnd::Create(const char* className, const char* title, DWORD style, DWORD exStyle,
                  const Placement& place, HWND parent, HMENU id) {
    const HWND window = ::CreateWindowExA(exStyle, className, title, style, place.x, place.y, place.width,
                                          place.height, parent, id, ::GetModuleHandleA(nullptr), this);
    if (window == nullptr) return false;
    if (m_hwnd == nullptr) SubclassWindow(window);
    return true;
}

void CWnd::SubclassWindow(HWND window) {
    Attach(window);
    m_superProc = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowProc)));
}

void CWnd::CenterWindow() {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoA(::MonitorFromWindow(m_hwnd, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& work = monitor.rcWork;
    RECT around = work;
    const HWND owner = ::GetWindow(m_hwnd, GW_OWNER);
    if (owner != nullptr && ::IsWindowVisible(owner) != FALSE && ::IsIconic(owner) == FALSE)
        ::GetWindowRect(owner, &around);
    RECT window;
    ::GetWindowRect(m_hwnd, &window);
    const LONG width = window.right - window.left;
    const LONG height = window.bottom - window.top;
    const LONG left = std::min((around.left + around.right - width) / 2, work.right - width);
    const LONG top = std::min((around.top + around.bottom - height) / 2, work.bottom - height);
    ::SetWindowPos(m_hwnd, nullptr, std::max(left, work.left), std::max(top, work.top), 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK CWnd::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        static_cast<CWnd*>(create->lpCreateParams)->Attach(window);
    }
    CWnd* self = FromHandle(window);
    if (self == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
    const LRESULT result = self->Dispatch(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        Windows().erase(window);
        self->m_hwnd = nullptr;
        self->m_superProc = nullptr;
    }
    return result;
}

LRESULT CWnd::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    const HandledMessage outer = m_current;  // handlers send messages, so this one may be nested
    m_current = {message, wParam, lParam};
    LRESULT result = 0;
    if (!ReflectToChild(message, wParam, lParam, result)) {
        if (const MessageRow* row = FindMessage(message); row != nullptr)
            result = row->handle(*this, wParam, lParam);
        else if (message != WM_COMMAND || !IsCommand(wParam, lParam) || !AcceptCommand(LOWORD(wParam)))
            result = Default();
    }
    m_current = outer;
    return result;
}

bool CWnd::AcceptCommand(UINT id) {
    // Under a modal dialog or message box no menu or button can send a command, but another program still
    // can.
    if (::IsWindowEnabled(::GetAncestor(m_hwnd, GA_ROOT)) == FALSE) return true;
    return RunCommand(id);
}

const MessageRow* CWnd::FindMessage(UINT message) const {
    for (const std::span<const MessageRow> rows : {Messages(), FrameworkMessages()})
        for (const MessageRow& row : rows)
            if (row.message == message || (row.message < message && message <= row.last)) return &row;
    return nullptr;
}

LRESULT CWnd::Default() {
    const auto [message, wParam, lParam] = m_current;
    if (m_superProc == nullptr) return ::DefWindowProcA(m_hwnd, message, wParam, lParam);
    return ::CallWindowProcA(m_superProc, m_hwnd, message, wParam, lParam);
}

bool CWnd::ReflectToChild(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(lParam);
        CWnd* child = FromHandle(header.hwndFrom);
        if (child == nullptr || child == this) return false;
        const NotifyRow* row = FindRow(child->Notifications(), header.code, &NotifyRow::code);
        if (row == nullptr) return false;
        result = row->handle(*child, header);
        return true;
    }
    if (message == WM_CTLCOLORSTATIC) {
        CWnd* child = FromHandle(reinterpret_cast<HWND>(lParam));
        if (child == nullptr || child->FindMessage(OCM_CTLCOLORSTATIC) == nullptr) return false;
        result = child->Dispatch(OCM_CTLCOLORSTATIC, wParam, lParam);
        return result != 0;  // no brush: the control wants the default colours
    }
    return false;
}

CWnd::Command CWnd::FindCommand(UINT id) {
    const CommandRow* row = FindRow(Commands(), id, &CommandRow::id);
    if (row == nullptr) row = FindRow(FrameworkCommands(), id, &CommandRow::id);
    return {row, this};
}

CWnd* CWnd::CommandParent() const { return FromHandle(::GetParent(m_hwnd)); }

bool CWnd::RunCommand(UINT id) {
    const Command command = FindCommand(id);
    if (command.row == nullptr) {
        CWnd* parent = CommandParent();
        return parent != nullptr && parent->RunCommand(id);
    }
    if (command.IsEnabled()) command.row->run(*command.target);
    return true;
}
