#include "framework/tool_bar.h"

#include <commctrl.h>

#include <cstring>

#include "framework/standard_ids.h"

namespace {

constexpr WORD kToolbarVersion = 1;

struct ToolbarHeader {
    WORD version;
    WORD width;
    WORD height;
    WORD count;
};

}  // namespace

bool CToolBar::CreateBar(HWND frame, UINT id) {
    // The frame places the bar itself, borders included, hence the three CCS_ styles.
    const DWORD style = TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER;
    if (!CreateControl(TOOLBARCLASSNAMEA, style, frame, id)) return false;
    ::SendMessageA(GetSafeHwnd(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    return true;
}

bool CToolBar::LoadToolBar(UINT resourceId) {
    const HMODULE module = ::GetModuleHandleA(nullptr);
    const HRSRC found =
        ::FindResourceA(module, MAKEINTRESOURCEA(resourceId), MAKEINTRESOURCEA(RT_TOOLBAR_NUMBER));
    if (found == nullptr) return false;
    const auto* bytes = static_cast<const char*>(::LockResource(::LoadResource(module, found)));
    const DWORD size = ::SizeofResource(module, found);
    ToolbarHeader header{};
    if (bytes == nullptr || size < sizeof header) return false;
    std::memcpy(&header, bytes, sizeof header);
    if (header.version != kToolbarVersion || size < sizeof header + header.count * sizeof(WORD)) return false;

    ::SendMessageA(GetSafeHwnd(), TB_SETBITMAPSIZE, 0, MAKELPARAM(header.width, header.height));
    for (int index = 0; index < header.count; ++index) {
        WORD id;
        std::memcpy(&id, bytes + sizeof header + static_cast<std::size_t>(index) * sizeof id, sizeof id);
        TBBUTTON button{};
        button.iBitmap = index;
        button.idCommand = id;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = TBSTYLE_BUTTON;
        if (::SendMessageA(GetSafeHwnd(), TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button)) == 0)
            return false;
        m_commands.push_back(id);
    }
    return true;
}

void CToolBar::AddStyle(DWORD added) {
    const auto style = static_cast<DWORD>(::SendMessageA(GetSafeHwnd(), TB_GETSTYLE, 0, 0));
    ::SendMessageA(GetSafeHwnd(), TB_SETSTYLE, 0, static_cast<LPARAM>(style | added));
}

void CToolBar::SetImages(HIMAGELIST normal, HIMAGELIST disabled, HIMAGELIST hot) {
    ::SendMessageA(GetSafeHwnd(), TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(normal));
    ::SendMessageA(GetSafeHwnd(), TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled));
    ::SendMessageA(GetSafeHwnd(), TB_SETHOTIMAGELIST, 0, reinterpret_cast<LPARAM>(hot));
}

void CToolBar::EnableButton(UINT id, bool enable) {
    const bool isEnabled = ::SendMessageA(GetSafeHwnd(), TB_ISBUTTONENABLED, id, 0) != 0;
    if (isEnabled != enable)
        ::SendMessageA(GetSafeHwnd(), TB_ENABLEBUTTON, id, MAKELPARAM(enable ? 1 : 0, 0));
}

int CToolBar::PlaceAtTop(const RECT& client) {
    if (!IsShown()) return 0;
    const auto buttonSize = static_cast<DWORD>(::SendMessageA(GetSafeHwnd(), TB_GETBUTTONSIZE, 0, 0));
    const int height = HIWORD(buttonSize);
    const int width = client.right - client.left - m_borders.left - m_borders.right;
    ::SetWindowPos(GetSafeHwnd(), nullptr, client.left + m_borders.left, client.top + m_borders.top,
                   width > 0 ? width : 0, height, SWP_NOZORDER | SWP_NOACTIVATE);
    return m_borders.top + height + m_borders.bottom;
}
