#pragma once

#include <string>

#include "framework/wnd.h"

/// A dialog made from a template resource. Messages and commands are declared in tables, as in every window;
/// OK and Cancel end a modal run unless a derived dialog says otherwise.
class CDialog : public CWnd {
public:
    explicit CDialog(UINT templateId) : m_templateId(templateId) {}

    /// Shows the dialog and runs it until it ends.
    /// @return what EndDialog was given: IDOK or IDCANCEL; -1 when the dialog cannot be made.
    [[nodiscard]] INT_PTR DoModal(HWND parent);
    /// Ends the modal run; the first result counts, and later calls change nothing.
    void EndDialog(int result);

    [[nodiscard]] HWND GetDlgItem(int id) const { return ::GetDlgItem(GetSafeHwnd(), id); }
    void SetDlgItemText(int id, const std::string& text) {
        ::SetDlgItemTextA(GetSafeHwnd(), id, text.c_str());
    }

protected:
    /// Runs once the controls exist. @return true to let the system choose the focus.
    [[nodiscard]] virtual bool OnInitDialog() { return true; }
    virtual void OnOK() { EndDialog(IDOK); }
    virtual void OnCancel() { EndDialog(IDCANCEL); }

    [[nodiscard]] std::span<const CommandRow> FrameworkCommands() const override;
    /// A dialog's commands are its own: its owner's tables are not asked.
    [[nodiscard]] CWnd* CommandParent() const override { return nullptr; }

private:
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    void RunOK() { OnOK(); }
    void RunCancel() { OnCancel(); }

    UINT m_templateId;
    bool m_hasEnded = false;
};
