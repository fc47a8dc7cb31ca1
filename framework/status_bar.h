#pragma once

#include <span>
#include <string>
#include <vector>

#include "framework/wnd.h"

constexpr UINT ID_SEPARATOR = 0;
constexpr UINT ID_INDICATOR_CAPS = 59137;
constexpr UINT ID_INDICATOR_NUM = 59138;
constexpr UINT ID_INDICATOR_SCRL = 59139;

/// The bar at the bottom: a message pane that takes what room there is, then one pane per key indicator.
class CStatusBar : public CWnd {
public:
    [[nodiscard]] bool CreateBar(HWND frame, UINT id);
    /// Sets the panes: ID_SEPARATOR is the message pane, every other id a string resource.
    [[nodiscard]] bool SetIndicators(std::span<const UINT> ids);

    /// Shows a text in the message pane; an unchanged text is not drawn again.
    void SetMessage(const std::string& text);
    /// Shows each indicator's text while its key is toggled on.
    void UpdateIndicators();

    void Show(bool show) { ::ShowWindow(GetSafeHwnd(), show ? SW_SHOWNA : SW_HIDE); }
    /// Whether the bar is to be seen whenever its frame is.
    [[nodiscard]] bool IsShown() const {
        return (::GetWindowLongA(GetSafeHwnd(), GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0;
    }
    /// Places the bar in the frame's client area. @return the height in pixels that it takes, 0 when hidden.
    [[nodiscard]] int PlaceAtBottom(const RECT& client);

private:
    struct Pane {
        UINT id;
        std::string text;  // what the string resource says
        int width;         // pixels; 0 for the message pane
        bool shown = false;
    };
    void PlacePanes(int barWidth);

    std::vector<Pane> m_panes;
    std::string m_message;
};
