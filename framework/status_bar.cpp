#include "framework/status_bar.h"

#include <commctrl.h>

#include "platform/text.h"

namespace {

constexpr int kPaneMargin = 12;  // pixels around an indicator's text, border included

int TextWidth(HWND bar, const std::string& text) {
    const HDC dc = ::GetDC(bar);
    const auto font = reinterpret_cast<HFONT>(::SendMessageA(bar, WM_GETFONT, 0, 0));
    const HGDIOBJ old = ::SelectObject(dc, font != nullptr ? font : ::GetStockObject(DEFAULT_GUI_FONT));
    SIZE size{};
    ::GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    ::SelectObject(dc, old);
    ::ReleaseDC(bar, dc);
    return size.cx;
}

int KeyOfIndicator(UINT id) {
    switch (id) {
        case ID_INDICATOR_CAPS:
            return VK_CAPITAL;
        case ID_INDICATOR_NUM:
            return VK_NUMLOCK;
        case ID_INDICATOR_SCRL:
            return VK_SCROLL;
        default:
            return 0;
    }
}

}  // namespace

bool CStatusBar::CreateBar(HWND frame, UINT id) {
    return Create(STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | CCS_BOTTOM | SBARS_SIZEGRIP, 0, {}, frame,
                  reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)));
}

bool CStatusBar::SetIndicators(std::span<const UINT> ids) {
    m_panes.clear();
    for (const UINT id : ids) {
        const std::string text = id == ID_SEPARATOR ? std::string() : LoadText(id);
        if (id != ID_SEPARATOR && text.empty()) return false;
        const int width = id == ID_SEPARATOR ? 0 : TextWidth(GetSafeHwnd(), text) + kPaneMargin;
        m_panes.push_back({id, text, width});
    }
    PlacePanes(0);
    return true;
}

void CStatusBar::PlacePanes(int barWidth) {
    int fixed = ::GetSystemMetrics(SM_CXVSCROLL);  // the size grip
    for (const Pane& pane : m_panes) fixed += pane.width;
    std::vector<int> edges;
    int edge = 0;
    for (const Pane& pane : m_panes) {
        edge += pane.width != 0 ? pane.width : (barWidth > fixed ? barWidth - fixed : 1);
        edges.push_back(edge);
    }
    ::SendMessageA(GetSafeHwnd(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

void CStatusBar::SetMessage(const std::string& text) {
    if (text == m_message) return;
    m_message = text;
    ::SendMessageA(GetSafeHwnd(), SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(m_message.c_str()));
}

void CStatusBar::UpdateIndicators() {
    for (std::size_t index = 0; index < m_panes.size(); ++index) {
        Pane& pane = m_panes[index];
        const int key = KeyOfIndicator(pane.id);
        const bool on = key != 0 && (::GetKeyState(key) & 1) != 0;
        if (on == pane.shown) continue;
        pane.shown = on;
        ::SendMessageA(GetSafeHwnd(), SB_SETTEXTA, index,
                       reinterpret_cast<LPARAM>(on ? pane.text.c_str() : ""));
    }
}

int CStatusBar::PlaceAtBottom(const RECT& client) {
    if (!IsShown()) return 0;
    ::SendMessageA(GetSafeHwnd(), WM_SIZE, 0, 0);  // the control moves itself to its parent's bottom edge
    PlacePanes(client.right - client.left);
    RECT bar;
    ::GetWindowRect(GetSafeHwnd(), &bar);
    return bar.bottom - bar.top;
}
