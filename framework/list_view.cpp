#include "framework/list_view.h"

#include <commctrl.h>

bool CListView::CreateView(HWND frame) {
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_SHOWSELALWAYS | ListStyle();
    constexpr UINT_PTR kFirstPane = 0xE900;
    return Create(WC_LISTVIEWA, "", style, WS_EX_CLIENTEDGE, {}, frame, reinterpret_cast<HMENU>(kFirstPane));
}
