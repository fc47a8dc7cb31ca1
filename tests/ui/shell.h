#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "analysis/channel.h"
#include "app/vellumor_app.h"
#include "platform/host_services.h"
#include "tests/support/hive_actions.h"
#include "ui/vellumor_view.h"

/// Records what the program asks of the system instead of doing it; with hives it does what Windows
/// documents.
class CRecordingActions : public CHiveActions {
public:
    CRecordingActions() { SetSystemActions(this); }
    ~CRecordingActions() override { SetSystemActions(nullptr); }

    [[nodiscard]] std::vector<RunningProgram> ListPrograms() override {
        asked.emplace_back("list");
        return programs;
    }
    void EndProgram(DWORD processId) override { asked.push_back("end " + std::to_string(processId)); }
    UINT RunProgram(const char* commandLine, int show) override {
        asked.push_back("run " + std::string(commandLine) + " " + std::to_string(show));
        return runAnswer;
    }
    int OpenWithShell(const char* target) override {
        asked.push_back("open " + std::string(target));
        return shellAnswer;
    }
    void Beep() override { asked.emplace_back("beep"); }
    void ShowHelp(const char* file) override { asked.push_back("help " + std::string(file)); }
    int ShowMessage(HWND owner, const char* text, const char* caption, UINT flags) override {
        messages.push_back({owner, text, caption, flags});
        return answer ? answer(messages.back()) : IDOK;
    }
    void EmptyFolder(const std::string& folder) override { emptied.push_back(folder); }

    struct Message {
        HWND owner;
        std::string text;
        std::string caption;
        UINT flags;
    };
    std::vector<Message> messages;
    /// The button that a message is answered with; IDOK where this is not set.
    std::function<int(const Message&)> answer;
    std::vector<std::string> emptied;

    int shellAnswer = 33;
    UINT runAnswer = 32;
    std::vector<RunningProgram> programs;
    std::vector<std::string> asked;
};

/// The whole window of the program, made the way the program makes it, on this thread.
class CShell : public CVellumorApp {
public:
    CShell();
    ~CShell() override;

    [[nodiscard]] CFrameWnd& Frame() const { return *MainWnd(); }
    [[nodiscard]] CVellumorView& View() const {
        return static_cast<CVellumorView&>(*MainWnd()->ActiveView());
    }
    [[nodiscard]] HWND FrameWindow() const { return MainWnd()->GetSafeHwnd(); }
    [[nodiscard]] HWND ListWindow() const { return MainWnd()->ActiveView()->GetSafeHwnd(); }
    [[nodiscard]] HWND ToolBar() const { return ::GetDlgItem(FrameWindow(), 59392); }
    [[nodiscard]] HWND StatusBar() const { return ::GetDlgItem(FrameWindow(), 59393); }

    void Command(UINT id) const { ::SendMessageA(FrameWindow(), WM_COMMAND, id, 0); }
    /// Hands a row to the view through the channel, as a worker does.
    void SendRow(const char* key, const char* time, const char* name, const char* data) const;
    /// Adds `count` rows with the keys "\HKEY_CURRENT_USER\row0" and on, and brings the buttons up to date.
    void AddRows(int count) const;
    [[nodiscard]] std::string Cell(int row, int column) const { return View().GetItemText(row, column); }
    [[nodiscard]] std::string Pane(int index) const;
};

/// Dispatches what waits in this thread's queue.
void PumpMessages();

/// Runs `act` on this thread after `milliseconds`, out of a modal loop that runs then; once.
void After(UINT milliseconds, std::function<void()> act);

/// The same, as soon as `ready` answers true.
void AsSoonAs(std::function<bool()> ready, std::function<void()> act);

[[nodiscard]] std::string WindowText(HWND window);
