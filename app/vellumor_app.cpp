#include "app/vellumor_app.h"

#include "app/main_frame.h"
#include "app/vellumor_doc.h"
#include "resources/resource.h"
#include "ui/vellumor_view.h"

bool CVellumorApp::InitInstance() {
    // A path on a drive without a medium would otherwise bring up a box of the system's and hold the
    // analysis.
    ::SetErrorMode(::SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
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
