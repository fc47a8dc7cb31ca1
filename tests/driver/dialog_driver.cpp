#include "tests/driver/dialog_driver.h"

HWND WaitForDialog(const CAppDriver& app, const char* caption) {
    HWND found = nullptr;
    WaitFor(std::string("the dialog ") + caption, [&] {
        found = ::FindWindowA("#32770", caption);
        DWORD owner = 0;
        ::GetWindowThreadProcessId(found, &owner);
        return found != nullptr && owner == app.ProcessId() && ::IsWindowVisible(found) != FALSE;
    });
    return found;
}

void PressButton(HWND dialog, int id) {
    ::PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
}

std::string AnswerBox(const CAppDriver& app, const char* beginning, const char* button, DWORD patience) {
    std::string text;
    WaitFor(
        std::string("the message ") + beginning,
        [&] {
            const auto box = app.ShownMessageBox();
            if (!box.has_value()) return false;
            text = box->Text();
            if (!text.starts_with(beginning)) return false;
            box->Dismiss(button);
            return true;
        },
        patience);
    return text;
}
