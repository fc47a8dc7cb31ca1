#include "app/vellumor_app.h"

#include "app/main_frame.h"
#include "app/vellumor_doc.h"
#include "platform/error_mode.h"
#include "resources/resource.h"
#include "ui/vellumor_view.h"

bool CVellumorApp::InitInstance() {
    SuppressDriveBoxes();
    EnableControlContainer();
    AddDocTemplate(std::make_unique<CSingleDocTemplate>(IDR_MAINFRAME, &MakeRuntime<CDocument, CVellumorDoc>,
                                                        &MakeRuntime<CFrameWnd, CMainFrame>,
                                                        &MakeRuntime<CView, CVellumorView>));
    if (!ProcessShellCommand()) return false;
    ::ShowWindow(MainWnd()->GetSafeHwnd(), SW_SHOW);
    MainWnd()->CenterWindow();
    ::UpdateWindow(MainWnd()->GetSafeHwnd());
    return true;
}
