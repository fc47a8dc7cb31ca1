#pragma once

#include "framework/wnd.h"

/// A child window that fills what the frame's bars leave.
class CView : public CWnd {
public:
    [[nodiscard]] virtual bool CreateView(HWND frame) = 0;
    /// Runs once, when frame and view exist and before the frame is shown.
    virtual void OnInitialUpdate() {}
};
