#pragma once

#include <memory>
#include <string>

#include "framework/doc_template.h"

/// What the command line asks for. A document program's switches start with '-' or '/'; anything else names
/// a file. Our documents hold nothing, so every request opens the one empty document.
struct CCommandLineInfo {
    enum class Command { FileNew, FileOpen };
    Command command = Command::FileNew;
    std::string fileName;
};

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
    static void ParseCommandLine(CCommandLineInfo& info);
    /// Opens the document, which makes its frame and view. @return false when that fails.
    [[nodiscard]] bool ProcessShellCommand(const CCommandLineInfo& info);
    [[nodiscard]] CFrameWnd* MainWnd() const { return m_template ? m_template->Frame() : nullptr; }

private:
    std::unique_ptr<CSingleDocTemplate> m_template;
};
