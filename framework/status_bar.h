#pragma once

#include <span>
#include <string>
#include <vector>

#include "framework/control_bar.h"

/// The bar at the bottom: a message pane that takes what room there is, then one pane per key indicator.
class CStatusBar : public CControlBar {
public:
    [[nodiscard]] bool CreateBar(HWND frame, UINT id);
    /// Sets the panes: ID_SEPARATOR is the message pane, every other id a string resource.
    [[nodiscard]] bool SetIndicators(std::span<const UINT> ids);

    /// Shows a text in the message pane; an unchanged text is not drawn again.
    void SetMessage(const std::string& text);
    /// Shows each indicator's text while its key is toggled on.
    void UpdateIndicators();

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
