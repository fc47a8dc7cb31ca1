#include "framework/status_bar.h"

#include <commctrl.h>

#include "platform/text.h"

namespace {

constexpr int kPaneMargin = 12;  // pixels around an indicator's text, border included

/// A window's drawing surface, released at the end.
class CClientDC {
public:
    explicit CClientDC(HWND window) : m_window(window), m_dc(::GetDC(window)) {}
    CClientDC(const CClientDC&) = delete;
    CClientDC& operator=(const CClientDC&) = delete;
    ~CClientDC() { ::ReleaseDC(m_window, m_dc); }
    [[nodiscard]] HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

int TextWidth(HWND bar, const std::string& text) {
    const CClientDC dc(bar);
    const auto font = reinterpret_cast<HFONT>(::SendMessageA(bar, WM_GETFONT, 0, 0));
    const HGDIOBJ old = ::SelectObject(dc.Get(), font != nullptr ? font : ::GetStockObject(DEFAULT_GUI_FONT));
    SIZE size{};
    ::GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    ::SelectObject(dc.Get(), old);
    return size.cx;
}

struct IndicatorKey {
    UINT indicator;
    int key;
};
constexpr IndicatorKey kIndicatorKeys[] = {
    {ID_INDICATOR_CAPS, VK_CAPITAL},
    {ID_INDICATOR_NUM, VK_NUMLOCK},
    {ID_INDICATOR_SCRL, VK_SCROLL},
};

int KeyOfIndicator(UINT id) {
    for (const IndicatorKey& row : kIndicatorKeys)
        if (row.indicator == id) return row.key;
    return 0;
}

}  // namespace

bool CStatusBar::CreateBar(HWND frame, UINT id) {
    return CreateControl(STATUSCLASSNAMEA, CCS_BOTTOM | SBARS_SIZEGRIP, frame, id);
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
