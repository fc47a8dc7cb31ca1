#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "analysis/channel.h"
#include "app/vellumor_app.h"
#include "tests/support/recording_actions.h"
#include "ui/vellumor_view.h"

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
