#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/ui/shell.h"

/// Opens one of the program's dialogs by its command, and works its controls from inside its modal loop.
class DialogBench {
public:
    /// @param title  the dialog's caption.
    /// @param list   the number of its list control.
    DialogBench(UINT command, const char* title, int list);

    /// Opens the dialog, runs `act` in it, and presses Cancel where it is still open then.
    void Show(const std::function<void()>& act);

    [[nodiscard]] HWND Dialog() const { return ::FindWindowA("#32770", m_title); }
    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(Dialog(), id); }
    [[nodiscard]] HWND List() const { return Control(m_list); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    void Press(int id) const { ::SendMessageA(Dialog(), WM_COMMAND, static_cast<WPARAM>(id), 0); }

    [[nodiscard]] int Rows() const;
    [[nodiscard]] std::string Cell(int row, int column) const;
    [[nodiscard]] std::string Heading(int column) const;
    void Check(const std::vector<int>& rows) const;

    /// Checks that just this was said, under the program's title.
    void CheckOnlyMessage(const char* text, UINT flags) const;

    CRecordingActions actions;
    CShell shell;
    int reply = IDOK;  // to every message

private:
    UINT m_command;
    const char* m_title;
    int m_list;
};
