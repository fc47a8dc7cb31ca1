#include "framework/frame_wnd.h"

#include "framework/prompts.h"
#include "platform/owners.h"

namespace {

constexpr char kFrameClass[] = "DocumentFrame";

}  // namespace

bool CFrameWnd::LoadFrame(UINT resourceId, const std::string& title, std::unique_ptr<CView> view) {
    m_view = std::move(view);
    const HINSTANCE module = ::GetModuleHandleA(nullptr);
    CREATESTRUCTA create{};
    create.style = static_cast<LONG>(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | FWS_ADDTOTITLE);
    create.x = create.y = create.cx = create.cy = CW_USEDEFAULT;
    PreCreateWindow(create);
    // The style bit is ours alone; the system would read it as something else.
    m_frameStyle = static_cast<DWORD>(create.style) & FWS_ADDTOTITLE;
    const DWORD style = static_cast<DWORD>(create.style) & ~FWS_ADDTOTITLE;
    const char* windowClass =
        RegisterWindowClass(kFrameClass, ::LoadIconA(module, MAKEINTRESOURCEA(resourceId)),
                            reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    CUniqueMenu menu(::LoadMenuA(module, MAKEINTRESOURCEA(resourceId)));
    const Placement place{create.x, create.y, create.cx, create.cy};
    if (!Create(windowClass, title.c_str(), style, 0, place, nullptr, nullptr)) return false;
    if (::SetMenu(GetSafeHwnd(), menu.Get()) != FALSE) (void)menu.Release();  // the window destroys its menu
    return true;
}

void CFrameWnd::PreCreateWindow(CREATESTRUCTA&) {}

LRESULT CFrameWnd::OnCreateMessage(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (result == -1 || !m_view->CreateView(GetSafeHwnd()) || !OnCreate()) return -1;
    RecalcLayout();
    return 0;
}

void CFrameWnd::ShowTitle(const std::string& appTitle, const std::string& documentTitle) {
    const bool addDocument = (m_frameStyle & FWS_ADDTOTITLE) != 0 && !documentTitle.empty();
    const std::string title = addDocument ? documentTitle + " - " + appTitle : appTitle;
    ::SetWindowTextA(GetSafeHwnd(), title.c_str());
}

void CFrameWnd::RecalcLayout() {
    RECT client;
    ::GetClientRect(GetSafeHwnd(), &client);
    client.top += m_wndToolBar.PlaceAtTop(client);
    client.bottom -= m_wndStatusBar.PlaceAtBottom(client);
    if (client.bottom < client.top) client.bottom = client.top;
    ::SetWindowPos(m_view->GetSafeHwnd(), nullptr, client.left, client.top, client.right - client.left,
                   client.bottom - client.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CFrameWnd::OnSize(WPARAM kind, LPARAM) {
    if (kind != SIZE_MINIMIZED && m_view->GetSafeHwnd() != nullptr) RecalcLayout();
    return 0;
}

LRESULT CFrameWnd::OnSetFocus(WPARAM, LPARAM) {
    ::SetFocus(m_view->GetSafeHwnd());
    return 0;
}

LRESULT CFrameWnd::OnClose(WPARAM, LPARAM) {
    // A modal dialog or message box is open: its caller still runs on this window's objects.
    if (::IsWindowEnabled(GetSafeHwnd()) == FALSE) return 0;
    ::DestroyWindow(GetSafeHwnd());
    return 0;
}

LRESULT CFrameWnd::OnDestroy(WPARAM, LPARAM) {
    ::PostQuitMessage(0);
    return Default();
}

CWnd::Command CFrameWnd::FindCommand(UINT id) {
    if (m_view != nullptr) {
        const Command command = m_view->FindCommand(id);
        if (command.row != nullptr) return command;
    }
    return CWnd::FindCommand(id);
}

LRESULT CFrameWnd::OnSysColorChange(WPARAM wParam, LPARAM lParam) {
    // Common controls learn of new colours from their parent alone.
    const CWnd* const children[] = {&m_wndToolBar, &m_wndStatusBar, m_view.get()};
    for (const CWnd* child : children)
        ::SendMessageA(child->GetSafeHwnd(), WM_SYSCOLORCHANGE, wParam, lParam);
    return Default();
}

LRESULT CFrameWnd::OnNotifyFormat(WPARAM, LPARAM) {
    return NFR_ANSI;  // the form that OnNotify knows
}

LRESULT CFrameWnd::OnInitMenuPopup(WPARAM popupHandle, LPARAM indexAndKind) {
    if (HIWORD(indexAndKind) != 0) return Default();  // the system menu looks after itself
    const HMENU popup = reinterpret_cast<HMENU>(popupHandle);
    const int count = ::GetMenuItemCount(popup);
    for (int position = 0; position < count; ++position) {
        const UINT id = ::GetMenuItemID(popup, position);
        if (id == 0 || id == static_cast<UINT>(-1)) continue;  // separator or submenu
        const Command command = FindCommand(id);
        const UINT where = MF_BYPOSITION;
        ::EnableMenuItem(popup, static_cast<UINT>(position),
                         where | (command.IsEnabled() ? MF_ENABLED : MF_GRAYED));
        ::CheckMenuItem(popup, static_cast<UINT>(position),
                        where | (command.IsChecked() ? MF_CHECKED : MF_UNCHECKED));
    }
    return 0;
}

LRESULT CFrameWnd::OnMenuSelect(WPARAM idAndFlags, LPARAM menu) {
    m_wndStatusBar.SetMessage(MenuPrompt(LOWORD(idAndFlags), HIWORD(idAndFlags), menu != 0));
    return 0;
}

LRESULT CFrameWnd::OnNotify(WPARAM, LPARAM lParam) {
    auto& header = *reinterpret_cast<NMHDR*>(lParam);
    if (header.code == TTN_GETDISPINFOA) {
        auto& info = reinterpret_cast<NMTTDISPINFOA&>(header);
        ::lstrcpynA(info.szText, CommandTip(static_cast<UINT>(header.idFrom)).c_str(), sizeof info.szText);
        return 0;
    }
    if (header.code == TBN_HOTITEMCHANGE) {
        const auto& item = reinterpret_cast<const NMTBHOTITEM&>(header);
        const bool leaving = (item.dwFlags & HICF_LEAVING) != 0;
        m_wndStatusBar.SetMessage(leaving ? std::string() : CommandPrompt(static_cast<UINT>(item.idNew)));
        return 0;
    }
    return Default();
}

void CFrameWnd::OnIdle() {
    m_wndToolBar.EnableButtons([this](UINT id) { return FindCommand(id).IsEnabled(); });
    m_wndStatusBar.UpdateIndicators();
}

void CFrameWnd::OnExit() { ::SendMessageA(GetSafeHwnd(), WM_CLOSE, 0, 0); }

void CFrameWnd::OnViewToolbar() {
    m_wndToolBar.Show(!m_wndToolBar.IsShown());
    RecalcLayout();
}

void CFrameWnd::OnViewStatusBar() {
    m_wndStatusBar.Show(!m_wndStatusBar.IsShown());
    RecalcLayout();
}

std::span<const MessageRow> CFrameWnd::FrameworkMessages() const {
    static constexpr MessageRow kRows[] = {
        {WM_CREATE, Handle<&CFrameWnd::OnCreateMessage>},
        {WM_SIZE, Handle<&CFrameWnd::OnSize>},
        {WM_SETFOCUS, Handle<&CFrameWnd::OnSetFocus>},
        {WM_CLOSE, Handle<&CFrameWnd::OnClose>},
        {WM_DESTROY, Handle<&CFrameWnd::OnDestroy>},
        {WM_INITMENUPOPUP, Handle<&CFrameWnd::OnInitMenuPopup>},
        {WM_SYSCOLORCHANGE, Handle<&CFrameWnd::OnSysColorChange>},
        {WM_NOTIFYFORMAT, Handle<&CFrameWnd::OnNotifyFormat>},
        {WM_NOTIFY, Handle<&CFrameWnd::OnNotify>},
        {WM_MENUSELECT, Handle<&CFrameWnd::OnMenuSelect>},
    };
    return kRows;
}

std::span<const CommandRow> CFrameWnd::FrameworkCommands() const {
    static constexpr CommandRow kRows[] = {
        {ID_APP_EXIT, Run<&CFrameWnd::OnExit>},
        {ID_VIEW_TOOLBAR, Run<&CFrameWnd::OnViewToolbar>, nullptr, When<&CFrameWnd::IsToolbarShown>},
        {ID_VIEW_STATUS_BAR, Run<&CFrameWnd::OnViewStatusBar>, nullptr, When<&CFrameWnd::IsStatusBarShown>},
    };
    return kRows;
}
