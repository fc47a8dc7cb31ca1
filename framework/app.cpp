#include "framework/app.h"

#include <commctrl.h>

#include <cstdlib>

int CWinApp::Run() {
    MSG message;
    bool idleIsDue = true;
    for (;;) {
        if (idleIsDue && ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE) {
            if (CFrameWnd* frame = MainWnd(); frame != nullptr && frame->GetSafeHwnd() != nullptr)
                frame->OnIdle();
            idleIsDue = false;
        }
        const BOOL got = ::GetMessageA(&message, nullptr, 0, 0);
        if (got == 0) return static_cast<int>(message.wParam);
        if (got == -1) return EXIT_FAILURE;
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
        // Painting and timers change no command's state; everything else may.
        if (message.message != WM_PAINT && message.message != WM_TIMER) idleIsDue = true;
    }
}

void CWinApp::EnableControlContainer() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS;
    ::InitCommonControlsEx(&controls);
}

bool CWinApp::ProcessShellCommand() { return m_template && m_template->OpenNewDocument(); }
