#pragma once

#include <memory>
#include <string>

#include "framework/status_bar.h"
#include "framework/tool_bar.h"
#include "framework/view.h"

/// Frame style: the document's title is shown before the application's.
constexpr DWORD FWS_ADDTOTITLE = 0x8000;

/// The main window: menu, bars, one view. It routes commands (view first, then itself), greys and ticks menu
/// items and buttons from the same tables, and shows each command's prompt in the status bar.
class CFrameWnd : public CWnd {
public:
    /// Creates the window with menu and icon `resourceId`, and the view in it.
    [[nodiscard]] bool LoadFrame(UINT resourceId, const std::string& title, std::unique_ptr<CView> view);
    [[nodiscard]] CView* ActiveView() const { return m_view.get(); }
    /// Shows the caption; the document's title takes part only in frames with FWS_ADDTOTITLE.
    void ShowTitle(const std::string& appTitle, const std::string& documentTitle);
    /// Brings buttons and indicators up to date; the message loop calls it whenever it runs out of messages.
    void OnIdle();

    [[nodiscard]] Command FindCommand(UINT id) override;

protected:
    /// A derived frame changes style and size here, before the window is made.
    virtual void PreCreateWindow(CREATESTRUCTA& create);
    /// Makes the frame's bars; false makes the frame's creation fail.
    [[nodiscard]] virtual bool OnCreate() { return true; }

    void RecalcLayout();
    [[nodiscard]] std::span<const MessageRow> FrameworkMessages() const override;
    [[nodiscard]] std::span<const CommandRow> FrameworkCommands() const override;

    CStatusBar m_wndStatusBar;
    CToolBar m_wndToolBar;

private:
    LRESULT OnCreateMessage(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnSysColorChange(WPARAM, LPARAM);
    LRESULT OnNotifyFormat(WPARAM, LPARAM);
    LRESULT OnInitMenuPopup(WPARAM, LPARAM);
    LRESULT OnMenuSelect(WPARAM, LPARAM);
    LRESULT OnNotify(WPARAM, LPARAM);
    void OnExit();
    void OnViewToolbar();
    void OnViewStatusBar();
    [[nodiscard]] bool IsToolbarShown() const { return m_wndToolBar.IsShown(); }
    [[nodiscard]] bool IsStatusBarShown() const { return m_wndStatusBar.IsShown(); }

    std::unique_ptr<CView> m_view;
    DWORD m_frameStyle = FWS_ADDTOTITLE;
};
