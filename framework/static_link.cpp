#include "framework/static_link.h"

#include "platform/host_services.h"
#include "platform/text.h"

namespace {

/// The pointing hand of the system's old help program, where there is one, or else the system's own.
HCURSOR LoadLinkCursor() {
    constexpr UINT kHandInHelpProgram = 106;
    char folder[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(folder, sizeof folder);
    HCURSOR cursor = nullptr;
    if (length > 0 && length < sizeof folder) {
        const std::string program = std::string(folder) + "\\winhlp32.exe";
        // For its resources only; nothing in it is to run.
        const HMODULE module = ::LoadLibraryExA(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        if (module != nullptr) {
            // A copy, for the cursor itself goes with the module.
            cursor = ::CopyIcon(::LoadCursorA(module, MAKEINTRESOURCEA(kHandInHelpProgram)));
            ::FreeLibrary(module);
        }
    }
    return cursor != nullptr ? cursor : ::LoadCursorA(nullptr, IDC_HAND);
}

HCURSOR LinkCursor() {
    static const HCURSOR cursor = LoadLinkCursor();  // tried once
    return cursor;
}

CUniqueFont UnderlinedFontOf(HWND control) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0));
    LOGFONTA description{};
    if (::GetObjectA(font, sizeof description, &description) == 0) return {};
    description.lfUnderline = TRUE;
    return CUniqueFont(::CreateFontIndirectA(&description));
}

bool IsText(HWND control) {
    // Left, centred and right text are the first three types.
    return (::GetWindowLongA(control, GWL_STYLE) & SS_TYPEMASK) <= SS_RIGHT;
}

}  // namespace

LRESULT CStaticLink::OnNcHitTest(WPARAM, LPARAM) {
    return HTCLIENT;  // a plain text lets the mouse through to the dialog
}

void CStaticLink::UnderlineText() {
    m_font = UnderlinedFontOf(GetSafeHwnd());
    // Themed controls choose their font once more behind the request for colours, so it becomes the control's
    // own.
    if (m_font)
        ::SendMessageA(GetSafeHwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Get()),
                       MAKELPARAM(TRUE, 0));
}

LRESULT CStaticLink::OnColor(WPARAM context, LPARAM) {
    if (!IsText(GetSafeHwnd())) return 0;
    if (!m_font) UnderlineText();
    const auto device = reinterpret_cast<HDC>(context);
    if (m_font) ::SelectObject(device, m_font.Get());
    ::SetTextColor(device, m_color);
    ::SetBkMode(device, TRANSPARENT);
    return reinterpret_cast<LRESULT>(::GetStockObject(HOLLOW_BRUSH));
}

void CStaticLink::FindTarget() {
    m_link.SetTarget(LoadText(static_cast<UINT>(::GetDlgCtrlID(GetSafeHwnd()))));
    if (m_link.HasTarget()) return;
    char text[512] = "";
    ::GetWindowTextA(GetSafeHwnd(), text, sizeof text);
    m_link.SetTarget(text);
}

LRESULT CStaticLink::OnLButtonDown(WPARAM, LPARAM) {
    if (!m_link.HasTarget()) FindTarget();
    if (!m_link.HasTarget()) return 0;
    constexpr int kLastError = 32;
    if (m_link.Navigate() > kLastError) {
        m_color = kVisited;
        ::InvalidateRect(GetSafeHwnd(), nullptr, TRUE);
    } else {
        SystemActions().Beep();
    }
    return 0;
}

LRESULT CStaticLink::OnSetCursor(WPARAM, LPARAM) {
    if (LinkCursor() == nullptr) return Default();
    ::SetCursor(LinkCursor());
    return TRUE;
}

std::span<const MessageRow> CStaticLink::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_NCHITTEST, Handle<&CStaticLink::OnNcHitTest>},
        {OCM_CTLCOLORSTATIC, Handle<&CStaticLink::OnColor>},
        {WM_LBUTTONDOWN, Handle<&CStaticLink::OnLButtonDown>},
        {WM_SETCURSOR, Handle<&CStaticLink::OnSetCursor>},
    };
    return kRows;
}
