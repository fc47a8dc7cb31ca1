#pragma once

#include "framework/standard_ids.h"
#include "framework/wnd.h"

/// A bar at an edge of the frame, which can be hidden.
class CControlBar : public CWnd {
public:
    void Show(bool show) { ::ShowWindow(GetSafeHwnd(), show ? SW_SHOWNA : SW_HIDE); }
    /// Whether the bar is to be seen whenever its frame is.
    [[nodiscard]] bool IsShown() const {
        return (::GetWindowLongA(GetSafeHwnd(), GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0;
    }

protected:
    [[nodiscard]] bool CreateControl(const char* className, DWORD style, HWND frame, UINT id) {
        return Create(className, "", WS_CHILD | WS_VISIBLE | style, 0, {}, frame,
                      reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)));
    }
};
