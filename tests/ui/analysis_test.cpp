#include <doctest/doctest.h>

#include <cstdlib>

#include "tests/ui/shell.h"

namespace {

constexpr char kKey[] = R"(\HKEY_LOCAL_MACHINE\Software\Gone)";

void SendProgress(const CShell& shell, const char* key) {
    g_analysisChannel.pszCurrentKey = key;
    ::SendMessageA(shell.ListWindow(), WM_ANALYZE_PROGRESS, 0, 0);
}

/// Runs the dialog modally and `act` while it is open.
INT_PTR RunDialog(const CShell& shell, CDlgAnalyze& dialog, UINT delay, const std::function<void()>& act) {
    After(delay, act);
    return dialog.DoModal(shell.FrameWindow());
}

std::string ControlText(const CDlgAnalyze& dialog, int id) { return WindowText(dialog.GetDlgItem(id)); }

LRESULT BarPosition(const CDlgAnalyze& dialog) {
    return ::SendMessageA(dialog.GetDlgItem(1039), PBM_GETPOS, 0, 0);
}

}  // namespace

TEST_CASE("the first row goes to the top and later ones to the end, unchecked") {
    CShell shell;
    shell.SendRow(kKey, "2009/03/05 07:08:09", "value", R"(C:\gone.exe)");
    shell.SendRow(R"(\HKEY_USERS\x)", "2009/03/05 07:08:10", "second", "data");
    shell.SendRow(R"(\HKEY_USERS\y)", "2009/03/05 07:08:11", "third", "data");
    REQUIRE(shell.View().GetItemCount() == 3);
    CHECK(shell.Cell(0, 0) == kKey);
    CHECK(shell.Cell(0, 1) == "2009/03/05 07:08:09");
    CHECK(shell.Cell(0, 2) == "value");
    CHECK(shell.Cell(0, 3) == R"(C:\gone.exe)");
    CHECK(shell.Cell(1, 2) == "second");
    CHECK(shell.Cell(2, 2) == "third");
    for (int row = 0; row < 3; ++row) CHECK_FALSE(shell.View().GetCheck(row));
    CHECK(AnalyzeDialog().m_strLastKey == R"(\HKEY_USERS\y)");
}

TEST_CASE("a row without value name and data shows empty cells") {
    CShell shell;
    shell.SendRow(kKey, "2009/03/05 07:08:09", nullptr, nullptr);
    CHECK(shell.Cell(0, 2).empty());
    CHECK(shell.Cell(0, 3).empty());
}

TEST_CASE("a row that comes after Cancel is dropped, but its key becomes the last key") {
    CShell shell;
    AnalyzeDialog().m_strLastKey.clear();
    ::SendMessageA(shell.ListWindow(), WM_STAGE9_DONE, 0, 0);  // makes the view publish its event
    ::SetEvent(g_analysisChannel.hCancelEvent);
    shell.SendRow(kKey, "2009/03/05 07:08:09", nullptr, nullptr);
    CHECK(shell.View().GetItemCount() == 0);
    CHECK(AnalyzeDialog().m_strLastKey == kKey);
    SendProgress(shell, R"(\HKEY_USERS\late)");
    CHECK(AnalyzeDialog().m_strCurrentKey == R"(\HKEY_USERS\late)");
}

TEST_CASE("rows are drawn in batches, and the batch ends by itself") {
    CShell shell;
    shell.AddRows(1);
    CHECK(::IsWindowVisible(shell.ListWindow()) != FALSE);
    shell.AddRows(200);
    ::Sleep(250);
    PumpMessages();  // the timer that ends the batch
    ::InvalidateRect(shell.ListWindow(), nullptr, FALSE);
    RECT pending;
    CHECK(::GetUpdateRect(shell.ListWindow(), &pending, FALSE) != FALSE);
    ::UpdateWindow(shell.ListWindow());
    CHECK(::GetUpdateRect(shell.ListWindow(), &pending, FALSE) == FALSE);
    CHECK(shell.View().GetItemCount() == 201);
}

TEST_CASE("the dialog starts with its bar at 0 of 400 and steps it every tick") {
    CShell shell;
    CDlgAnalyze dialog;
    CHECK(dialog.m_bFinishing == 0);
    LRESULT positions[2] = {-1, -1};
    PBRANGE range{};
    After(50, [&] { positions[0] = BarPosition(dialog); });
    const INT_PTR result = RunDialog(shell, dialog, 900, [&] {
        positions[1] = BarPosition(dialog);
        ::SendMessageA(dialog.GetDlgItem(1039), PBM_GETRANGE, FALSE, reinterpret_cast<LPARAM>(&range));
        CHECK(dialog.m_bStarted == 1);
        CHECK(dialog.m_nRange == 400);
        CHECK(dialog.m_nTimer == 1);
        ::SendMessageA(dialog.GetSafeHwnd(), WM_COMMAND, IDCANCEL, 0);
    });
    CHECK(result == IDCANCEL);
    CHECK(range.iLow == 0);
    CHECK(range.iHigh == 400);
    CHECK(positions[0] == 0);
    CHECK(positions[1] >= 20);
    CHECK(positions[1] <= 40);
}

TEST_CASE("the dialog opens over the middle of its owner, with the focus on Cancel") {
    CShell shell;
    CDlgAnalyze dialog;
    (void)RunDialog(shell, dialog, 100, [&] {
        RECT owner;
        RECT place;
        ::GetWindowRect(shell.FrameWindow(), &owner);
        ::GetWindowRect(dialog.GetSafeHwnd(), &place);
        CHECK(std::abs((place.left - owner.left) - (owner.right - place.right)) <= 1);
        CHECK(std::abs((place.top - owner.top) - (owner.bottom - place.bottom)) <= 1);
        CHECK(::GetFocus() == dialog.GetDlgItem(IDCANCEL));
        dialog.EndDialog(IDCANCEL);
    });
}

TEST_CASE("a finishing dialog ends itself at the next tick") {
    CShell shell;
    CDlgAnalyze dialog;
    CHECK(RunDialog(shell, dialog, 300, [&] { dialog.m_bFinishing = 1; }) == IDCANCEL);
}

TEST_CASE("closing the dialog ends it at once and gives its owner back") {
    CShell shell;
    CDlgAnalyze dialog;
    const INT_PTR result = RunDialog(shell, dialog, 100, [&] {
        CHECK(::IsWindowEnabled(shell.FrameWindow()) == FALSE);
        ::SendMessageA(dialog.GetSafeHwnd(), WM_CLOSE, 0, 0);
        CHECK(::IsWindowEnabled(shell.FrameWindow()) != FALSE);
    });
    CHECK(result == IDCANCEL);
}

TEST_CASE("a dialog that has ended does not give back the owner that a later box has taken") {
    CShell shell;
    CDlgAnalyze dialog;
    bool isEnabled = true;
    After(50, [&] {
        dialog.m_bFinishing = 1;
        ::SendMessageA(dialog.GetSafeHwnd(), WM_CLOSE, 0, 0);
        After(600, [&] {  // ticks of the ended dialog have come by now
            isEnabled = ::IsWindowEnabled(shell.FrameWindow()) != FALSE;
            ::EndDialog(::FindWindowA("#32770", "box"), IDOK);
        });
        ::MessageBoxA(shell.ListWindow(), "text", "box", MB_OK);
    });
    CHECK(dialog.DoModal(shell.FrameWindow()) == IDCANCEL);
    CHECK_FALSE(isEnabled);
}

TEST_CASE("texts reach the controls seldom, the newest with the next tick, and unchanged ones never") {
    CShell shell;
    CDlgAnalyze dialog;
    std::string atOnce;
    std::string afterTick;
    After(450, [&] {
        dialog.m_strCurrentKey = "first";
        dialog.Refresh();
        dialog.m_strCurrentKey = "second";
        dialog.RefreshSoon();
        atOnce = ControlText(dialog, 1011);
        ::SetDlgItemTextA(dialog.GetSafeHwnd(), 1010, "untouched");
    });
    (void)RunDialog(shell, dialog, 900, [&] {
        afterTick = ControlText(dialog, 1011);
        CHECK(ControlText(dialog, 1010) == "untouched");
        dialog.EndDialog(IDCANCEL);
    });
    CHECK(atOnce == "first");
    CHECK(afterTick == "second");
}

TEST_CASE("the newest texts are shown before the dialog closes") {
    CShell shell;
    CDlgAnalyze dialog;
    (void)RunDialog(shell, dialog, 100, [&] {
        dialog.Refresh();
        dialog.m_strLastKey = "last";
        dialog.m_strCurrentKey = "current";
        const HWND window = dialog.GetSafeHwnd();
        ::SendMessageA(window, WM_COMMAND, IDCANCEL, 0);
        CHECK(ControlText(dialog, 1010) == "last");
        CHECK(ControlText(dialog, 1011) == "current");
    });
}

TEST_CASE("the closing message names the number of rows, and keeps what was found when canceled") {
    CRecordingActions actions;
    CShell shell;
    const auto close = [&](UINT message) {
        ::SendMessageA(shell.ListWindow(), message, 0, 0);
        return actions.messages.back();
    };
    CHECK(close(WM_ANALYZE_DONE).text ==
          "Registry analyzing completed successfully, no invalid entry found.");
    CHECK(close(WM_ANALYZE_CANCELED).text == "Registry analyzing canceled, no invalid entry found.");
    shell.AddRows(2);
    CHECK(close(WM_ANALYZE_DONE).text ==
          "Registry analyzing completed successfully, 2 invalid entries found.");
    const CRecordingActions::Message last = close(WM_ANALYZE_CANCELED);
    CHECK(last.text == "Registry analyzing canceled, 2 invalid entries found.");
    CHECK(last.caption == "Analyzing result");
    CHECK(last.owner == shell.ListWindow());
    CHECK(last.flags == MB_ICONINFORMATION);
    CHECK(shell.View().GetItemCount() == 2);
    CHECK(AnalyzeDialog().m_bFinishing == 0);
}

TEST_CASE("a canceled analysis leaves the event ready for the next one") {
    CRecordingActions actions;
    CShell shell;
    ::SendMessageA(shell.ListWindow(), WM_STAGE9_DONE, 0, 0);  // makes the view publish its event
    ::SetEvent(g_analysisChannel.hCancelEvent);
    ::SendMessageA(shell.ListWindow(), WM_ANALYZE_CANCELED, 0, 0);
    CHECK(::WaitForSingleObject(g_analysisChannel.hCancelEvent, 0) == WAIT_TIMEOUT);
}
