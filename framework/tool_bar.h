#pragma once

#include <windows.h>

#include <vector>

#include "framework/control_bar.h"
#include "platform/owners.h"

/// Pixels left free around a toolbar.
struct BarBorders {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// The bar of picture buttons at the top; each button's identifier is the command that it runs.
class CToolBar : public CControlBar {
public:
    void SetBorders(const BarBorders& borders) { m_borders = borders; }
    [[nodiscard]] bool CreateBar(HWND frame, UINT id);
    /// Adds the buttons that a toolbar resource lists (version 1: picture width, height, count, command ids).
    [[nodiscard]] bool LoadToolBar(UINT resourceId);
    /// Adds TBSTYLE_... bits to the control.
    void AddStyle(DWORD style);
    /// Installs the three picture strips; the control borrows the lists, so their owner outlives it.
    void SetImages(HIMAGELIST normal, HIMAGELIST disabled, HIMAGELIST hot);

    /// Enables each button for which `isEnabled(command id)` is true and greys the others.
    template <class Predicate>
    void EnableButtons(Predicate isEnabled) {
        for (const UINT id : m_commands) EnableButton(id, isEnabled(id));
    }

    /// Places the bar in the frame's client area. @return the height in pixels that it takes, 0 when hidden.
    [[nodiscard]] int PlaceAtTop(const RECT& client);

private:
    void EnableButton(UINT id, bool enable);

    BarBorders m_borders;
    std::vector<UINT> m_commands;
};
