#include "tests/driver/dialogs.h"

#include <commctrl.h>

#include <algorithm>

#include "tests/driver/commands.h"
#include "tests/driver/window_access.h"

namespace {

constexpr char kDialogClass[] = "#32770";
constexpr char kMenuClass[] = "#32768";

bool IsProgressDialog(HWND window) {
    return HasClass(window, kDialogClass) && ::GetDlgItem(window, controls::kCurrentKey) != nullptr;
}

bool IsListDialog(HWND window) { return ::FindWindowExA(window, nullptr, WC_LISTVIEWA, nullptr) != nullptr; }

/// A dialog that is just being destroyed has lost some controls, but it is hidden by then: hence the second
/// look.
bool IsMessageBox(HWND window) {
    return HasClass(window, kDialogClass) && !IsProgressDialog(window) && !IsListDialog(window) &&
           ::FindWindowExA(window, nullptr, "Button", nullptr) != nullptr &&
           ::IsWindowVisible(window) != FALSE;
}

std::string WithoutAccessMark(std::string text) {
    std::erase(text, '&');
    return text;
}

std::vector<HWND> ShownChildren(HWND window, const char* className) {
    std::vector<HWND> children = ChildrenOf(window);
    std::erase_if(children, [className](HWND child) {
        return !HasClass(child, className) || (StyleOf(child) & WS_VISIBLE) == 0;
    });
    return children;
}

bool ShowsIcon(HWND label) { return (StyleOf(label) & SS_TYPEMASK) == SS_ICON; }

}  // namespace

std::string CProgressDialog::LastKey() const { return TextOf(Control(controls::kLastKey)); }

std::string CProgressDialog::CurrentKey() const { return TextOf(Control(controls::kCurrentKey)); }

int CProgressDialog::BarPosition() const {
    return static_cast<int>(Ask(Control(controls::kProgressBar), PBM_GETPOS));
}

std::pair<int, int> CProgressDialog::BarRange() const {
    const HWND bar = Control(controls::kProgressBar);
    return {static_cast<int>(Ask(bar, PBM_GETRANGE, TRUE)), static_cast<int>(Ask(bar, PBM_GETRANGE, FALSE))};
}

std::vector<std::string> CProgressDialog::GroupTexts() const {
    std::vector<std::string> texts;
    for (const HWND button : ShownChildren(m_dialog, "Button"))
        if ((StyleOf(button) & BS_TYPEMASK) == BS_GROUPBOX) texts.push_back(TextOf(button));
    return texts;
}

void CProgressDialog::PressCancel() const {
    ::PostMessageA(m_dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                   reinterpret_cast<LPARAM>(Control(IDCANCEL)));
}

std::string CMessageBox::Caption() const { return TextOf(m_box); }

std::string CMessageBox::Text() const {
    for (const HWND label : ShownChildren(m_box, "Static"))
        if (!ShowsIcon(label)) return TextOf(label);
    return {};
}

HWND CMessageBox::Icon() const {
    for (const HWND label : ShownChildren(m_box, "Static"))
        if (ShowsIcon(label) && Ask(label, STM_GETICON) != 0) return label;
    return nullptr;
}

std::vector<std::string> CMessageBox::Buttons() const {
    std::vector<HWND> buttons = ShownChildren(m_box, "Button");
    std::ranges::sort(buttons, {}, [](HWND button) { return ScreenRect(button).left; });
    std::vector<std::string> texts;
    for (const HWND button : buttons) texts.push_back(WithoutAccessMark(TextOf(button)));
    return texts;
}

void CMessageBox::Dismiss(const std::string& button) const {
    for (const HWND child : ShownChildren(m_box, "Button")) {
        if (WithoutAccessMark(TextOf(child)) != button) continue;
        const auto id = static_cast<WORD>(::GetDlgCtrlID(child));
        ::PostMessageA(m_box, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(child));
        WaitFor("the end of the message box", [this] { return !Exists(); });
        return;
    }
    throw CDriverError("the message box has no button '" + button + "'");
}

std::optional<CProgressDialog> FindProgressDialog(DWORD processId) {
    for (const HWND window : TopWindowsOf(processId))
        if (IsProgressDialog(window) && ::GetWindow(window, GW_OWNER) != nullptr)
            return CProgressDialog(window);
    return std::nullopt;
}

std::optional<CMessageBox> FindMessageBox(DWORD processId) {
    for (const HWND window : TopWindowsOf(processId))
        if (IsMessageBox(window)) return CMessageBox(window);
    return std::nullopt;
}

HWND FindPopupMenu(DWORD processId) {
    for (const HWND window : TopWindowsOf(processId))
        if (HasClass(window, kMenuClass)) return window;
    return nullptr;
}
