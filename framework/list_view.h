#pragma once

#include "framework/list_ctrl.h"
#include "framework/view.h"

/// A view that is a list control: the control's window is the view's window, and the control keeps all texts
/// and check states.
class CListView : public CView, public CListCtrl {
public:
    [[nodiscard]] bool CreateView(HWND frame) override;

protected:
    /// Derived views add LVS_ bits before the control is made.
    [[nodiscard]] virtual DWORD ListStyle() const { return 0; }
    [[nodiscard]] HWND ListWindow() const override { return GetSafeHwnd(); }
};
