#include "app/main_frame.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "app/about_box.h"
#include "app/help_rules.h"
#include "platform/host_services.h"
#include "platform/program_folder.h"
#include "resources/resource.h"

namespace {

constexpr int kButtonSize = 48;  // pixels, width and height
constexpr BarBorders kToolBarBorders{5, 3, 3, 3};
constexpr UINT kIndicators[] = {ID_SEPARATOR, ID_INDICATOR_CAPS, ID_INDICATOR_NUM, ID_INDICATOR_SCRL};

// Room for all columns of the list with its scroll bar, and a comfortable number of rows.
constexpr int kPreferredWidth = 1070;
constexpr int kPreferredHeight = 680;

/// A strip of pictures whose first stored pixel has the colour that is to be transparent.
CUniqueImageList LoadImages(UINT bitmapId) {
    const CUniqueBitmap bitmap(
        static_cast<HBITMAP>(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(bitmapId),
                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION | LR_DEFAULTSIZE)));
    BITMAP description{};
    if (!bitmap || ::GetObjectA(bitmap.Get(), sizeof description, &description) == 0 ||
        description.bmBits == nullptr)
        return {};
    const auto* pixel = static_cast<const BYTE*>(description.bmBits);  // stored as blue, green, red
    const COLORREF transparent = RGB(pixel[2], pixel[1], pixel[0]);
    CUniqueImageList images(::ImageList_Create(kButtonSize, kButtonSize, ILC_COLOR24 | ILC_MASK, 0, 0));
    if (images && ::ImageList_AddMasked(images.Get(), bitmap.Get(), transparent) == -1) images.Reset();
    return images;
}

}  // namespace

void CMainFrame::PreCreateWindow(CREATESTRUCTA& create) {
    create.style &= static_cast<LONG>(~FWS_ADDTOTITLE);
    RECT work{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    create.cx = std::min<int>(kPreferredWidth, work.right - work.left);
    create.cy = std::min<int>(kPreferredHeight, work.bottom - work.top);
}

bool CMainFrame::OnCreate() { return CreateToolBar() && CreateStatusBar() && InstallToolBarImages(); }

bool CMainFrame::CreateToolBar() {
    m_wndToolBar.SetBorders(kToolBarBorders);
    if (!m_wndToolBar.CreateBar(GetSafeHwnd(), ID_VIEW_TOOLBAR) || !m_wndToolBar.LoadToolBar(IDR_MAINFRAME))
        return false;
    m_wndToolBar.AddStyle(TBSTYLE_FLAT);
    return true;
}

bool CMainFrame::CreateStatusBar() {
    return m_wndStatusBar.CreateBar(GetSafeHwnd(), ID_VIEW_STATUS_BAR) &&
           m_wndStatusBar.SetIndicators(kIndicators);
}

bool CMainFrame::InstallToolBarImages() {
    m_normalImages = LoadImages(IDB_TOOLBAR);
    m_disabledImages = LoadImages(IDB_TOOLBAR_DISABLED);
    m_hotImages = LoadImages(IDB_TOOLBAR_HOT);
    if (!m_normalImages || !m_disabledImages || !m_hotImages) return false;
    m_wndToolBar.SetImages(m_normalImages.Get(), m_disabledImages.Get(), m_hotImages.Get());
    return true;
}

void CMainFrame::OnHelpContent() {
    const std::string folder = ProgramFolder();
    if (!folder.empty()) SystemActions().ShowHelp(HelpFileIn(folder).c_str());
}

void CMainFrame::OnAppAbout() {
    CAboutDlg dialog;
    if (dialog.DoModal(GetSafeHwnd()) == -1) SystemActions().Beep();  // no memory for a dialog
}

std::span<const CommandRow> CMainFrame::Commands() const {
    static constexpr CommandRow kRows[] = {
        {ID_HELP_CONTENT, Run<&CMainFrame::OnHelpContent>},
        {ID_APP_ABOUT, Run<&CMainFrame::OnAppAbout>},
    };
    return kRows;
}
