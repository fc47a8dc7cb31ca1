#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/driver/wait.h"

/// The progress dialog of another program's analysis. Once the dialog is gone its texts are empty.
class CProgressDialog {
public:
    explicit CProgressDialog(HWND dialog) : m_dialog(dialog) {}

    [[nodiscard]] HWND Window() const { return m_dialog; }
    [[nodiscard]] bool Exists() const { return ::IsWindow(m_dialog) != FALSE; }
    /// An ended dialog is hidden at once, but may exist as long as a message box is open above it.
    [[nodiscard]] bool IsShown() const { return ::IsWindowVisible(m_dialog) != FALSE; }
    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(m_dialog, id); }
    [[nodiscard]] std::string LastKey() const;
    [[nodiscard]] std::string CurrentKey() const;
    [[nodiscard]] int BarPosition() const;
    /// @return lower and upper end.
    [[nodiscard]] std::pair<int, int> BarRange() const;
    /// The texts of its group boxes, from the top.
    [[nodiscard]] std::vector<std::string> GroupTexts() const;

    /// Presses the Cancel button, without waiting for what that brings.
    void PressCancel() const;

private:
    HWND m_dialog;
};

/// A message box of another program.
class CMessageBox {
public:
    explicit CMessageBox(HWND box) : m_box(box) {}

    [[nodiscard]] HWND Window() const { return m_box; }
    [[nodiscard]] bool Exists() const { return ::IsWindow(m_box) != FALSE; }
    [[nodiscard]] std::string Caption() const;
    [[nodiscard]] std::string Text() const;
    /// The static control that shows an icon; null when there is none.
    [[nodiscard]] HWND Icon() const;
    /// The texts of the buttons without access marks, from the left.
    [[nodiscard]] std::vector<std::string> Buttons() const;

    /// Presses the button of this text and waits until the box is gone.
    void Dismiss(const std::string& button = "OK") const;

private:
    HWND m_box;
};

/// The progress dialog of a process, owned by its main window; nothing when it is not shown.
[[nodiscard]] std::optional<CProgressDialog> FindProgressDialog(DWORD processId);
/// The topmost message box of a process: a visible dialog without the controls of our own dialogs.
[[nodiscard]] std::optional<CMessageBox> FindMessageBox(DWORD processId);
/// The open popup menu of a process; null when there is none.
[[nodiscard]] HWND FindPopupMenu(DWORD processId);
