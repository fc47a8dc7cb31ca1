#include "framework/dialog.h"

INT_PTR CDialog::DoModal(HWND parent) {
    m_hasEnded = false;
    return ::DialogBoxParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(m_templateId), parent, &DialogProc,
                             reinterpret_cast<LPARAM>(this));
}

void CDialog::EndDialog(int result) {
    // The system enables the owner at every call, also while a box that came after this dialog has disabled
    // it.
    if (m_hasEnded) return;
    m_hasEnded = true;
    ::EndDialog(GetSafeHwnd(), result);
}

INT_PTR CALLBACK CDialog::DialogProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_INITDIALOG) return FALSE;
    auto* self = reinterpret_cast<CDialog*>(lParam);
    self->SubclassWindow(dialog);
    self->CenterWindow();
    return self->OnInitDialog() ? TRUE : FALSE;
}

std::span<const CommandRow> CDialog::FrameworkCommands() const {
    static constexpr CommandRow kRows[] = {
        {IDOK, Run<&CDialog::RunOK>},
        {IDCANCEL, Run<&CDialog::RunCancel>},
    };
    return kRows;
}
