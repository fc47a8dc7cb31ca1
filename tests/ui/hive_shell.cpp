#include "tests/ui/hive_shell.h"

#include <doctest/doctest.h>

#include "framework/list_ctrl.h"

CHiveShell::CHiveShell() {
    actions.answer = [this](const CRecordingActions::Message& message) {
        if (onMessage) onMessage();
        return (message.flags & MB_TYPEMASK) == MB_YESNO ? yesOrNo : IDOK;
    };
    // A window under the mouse sets the cursor as it likes.
    ::SetCursorPos(0, 0);
    PumpMessages();
    ::SetCursor(::LoadCursorA(nullptr, IDC_CROSS));
}

void CHiveShell::AddMachines(std::initializer_list<const char*> names) {
    for (const char* name : names) hives.AddMachine(name);
    actions.hiveFiles = hives.Files();
}

void CHiveShell::Run(UINT command) const {
    shell.Command(command);
    PumpMessages();
}

std::vector<std::string> CHiveShell::Texts() const {
    std::vector<std::string> texts;
    for (const auto& message : actions.messages) texts.push_back(message.text);
    return texts;
}

void CHiveShell::CheckMessage(std::size_t index, const std::string& text, UINT flags) const {
    REQUIRE(index < actions.messages.size());
    const CRecordingActions::Message& message = actions.messages[index];
    CHECK(message.text == text);
    CHECK(message.caption == "Vellumor v4.55");
    CHECK(message.flags == flags);
    CHECK(message.owner == shell.ListWindow());
}

std::vector<Column> ColumnsOf(HWND list) {
    std::vector<Column> columns;
    for (;;) {
        char heading[64] = "";
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = heading;
        column.cchTextMax = sizeof heading;
        if (::SendMessageA(list, LVM_GETCOLUMNA, columns.size(), reinterpret_cast<LPARAM>(&column)) == FALSE)
            return columns;
        columns.emplace_back(heading, column.cx);
    }
}

std::vector<std::string> TextsIn(HWND list, int column) {
    std::vector<std::string> texts;
    const CDialogList control(list);
    for (int row = 0; row < control.GetItemCount(); ++row) texts.push_back(control.GetItemText(row, column));
    return texts;
}

LRESULT BarPosition(HWND bar) { return ::SendMessageA(bar, PBM_GETPOS, 0, 0); }

void CheckBarRange(HWND bar, int end) {
    PBRANGE range{-1, -1};
    ::SendMessageA(bar, PBM_GETRANGE, FALSE, reinterpret_cast<LPARAM>(&range));
    CHECK(range.iLow == 0);
    CHECK(range.iHigh == end);
}

void CheckStaysOpen(HWND dialog) {
    for (const WPARAM button : {IDOK, IDCANCEL}) ::SendMessageA(dialog, WM_COMMAND, button, 0);
    ::SendMessageA(dialog, WM_CLOSE, 0, 0);
    PumpMessages();
    CHECK(::IsWindowVisible(dialog) != FALSE);
    CHECK(::IsWindowEnabled(::GetWindow(dialog, GW_OWNER)) == FALSE);
}

void CheckShowsWaitCursor(HWND dialog) {
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_WAIT));
    ::SetCursor(::LoadCursorA(nullptr, IDC_CROSS));
    ::SendMessageA(dialog, WM_SETCURSOR, reinterpret_cast<WPARAM>(dialog),
                   MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_WAIT));
}
