#pragma once

#include <memory>
#include <utility>

#include "framework/doc_template.h"

/// The application: one template, one main window, one message loop.
class CWinApp {
public:
    CWinApp() = default;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    /// Sets the program up. @return false to end it before its message loop.
    [[nodiscard]] virtual bool InitInstance() = 0;
    /// Runs the message loop until WM_QUIT. @return the exit code.
    int Run();

protected:
    /// Lets windows host the system's common controls.
    void EnableControlContainer();
    void AddDocTemplate(std::unique_ptr<CSingleDocTemplate> docTemplate) {
        m_template = std::move(docTemplate);
    }
    /// Does what the command line asks for, which is always the same: there is one kind of document, it is
    /// never loaded from a file, so switches and file names alike open a new one. That makes its frame and
    /// view.
    /// @return false when that fails.
    [[nodiscard]] bool ProcessShellCommand();
    [[nodiscard]] CFrameWnd* MainWnd() const { return m_template ? m_template->Frame() : nullptr; }

private:
    std::unique_ptr<CSingleDocTemplate> m_template;
};
