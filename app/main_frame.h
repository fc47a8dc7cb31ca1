#pragma once

#include "framework/frame_wnd.h"
#include "platform/owners.h"

/// The main window: menu, toolbar with its three picture strips, status bar, help.
class CMainFrame : public CFrameWnd {
protected:
    void PreCreateWindow(CREATESTRUCTA& create) override;
    [[nodiscard]] bool OnCreate() override;
    [[nodiscard]] std::span<const CommandRow> Commands() const override;

private:
    [[nodiscard]] bool CreateToolBar();
    [[nodiscard]] bool CreateStatusBar();
    [[nodiscard]] bool InstallToolBarImages();
    void OnHelpContent();
    void OnAppAbout();

    CUniqueImageList m_normalImages;
    CUniqueImageList m_disabledImages;
    CUniqueImageList m_hotImages;
};
