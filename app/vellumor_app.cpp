#include "app/vellumor_app.h"

#include "app/main_frame.h"
#include "app/vellumor_doc.h"
#include "resources/resource.h"
#include "ui/vellumor_view.h"

bool CVellumorApp::InitInstance() {
    EnableControlContainer();
    AddDocTemplate(std::make_unique<CSingleDocTemplate>(IDR_MAINFRAME, &MakeRuntime<CDocument, CVellumorDoc>,
                                                        &MakeRuntime<CFrameWnd, CMainFrame>,
                                                        &MakeRuntime<CView, CVellumorView>));
    CCommandLineInfo commandLine;
    ParseCommandLine(commandLine);
    if (!ProcessShellCommand(commandLine)) return false;
    ::ShowWindow(MainWnd()->GetSafeHwnd(), SW_SHOW);
    MainWnd()->CenterWindow();
    ::UpdateWindow(MainWnd()->GetSafeHwnd());
    return true;
}
