#include "ui/vellumor_view.h"

#include <commctrl.h>

#include <vector>

#include "analysis/channel.h"
#include "framework/wait_cursor.h"
#include "platform/host_services.h"
#include "platform/program_folder.h"
#include "resources/resource.h"
#include "ui/registry_editor.h"
#include "ui/texts.h"

namespace {

struct Column {
    const char* heading;
    int width;  // pixels
};
constexpr Column kColumns[] = {
    {texts::kColumnKey, 350},
    {texts::kColumnWriteTime, 145},
    {texts::kColumnValueName, 125},
    {texts::kColumnData, 405},
};

}  // namespace

void CVellumorView::OnInitialUpdate() {
    int index = 0;
    for (const Column& column : kColumns) InsertColumn(index++, column.heading, column.width);
    SetExtendedStyle(LVS_EX_GRIDLINES | LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    // The files that a restore replaced are in use until the restart that follows it, so they go now.
    const std::string folder = ProgramFolder();
    if (!folder.empty()) SystemActions().EmptyFolder(folder + "\\Backup\\System");
}

bool CVellumorView::HasRows() const { return GetNextItem(-1, LVNI_ALL) != -1; }

void CVellumorView::OnCheck() {
    const int count = GetSelectedCount();
    if (count == 0) return;
    std::vector<int> rows(static_cast<std::size_t>(count), -1);
    std::size_t place = rows.size();
    for (int row = GetNextItem(-1, LVNI_SELECTED); row != -1 && place > 0;
         row = GetNextItem(row, LVNI_SELECTED))
        rows[--place] = row;
    // From the first place that was filled: fewer rows than counted must not leave a -1, which means all
    // rows.
    for (; place < rows.size(); ++place) SetCheck(rows[place], true);
}

void CVellumorView::OnCheckAll() {
    const int count = GetItemCount();
    for (int row = 0; row < count; ++row) SetCheck(row, true);
}

void CVellumorView::OnUncheck() {
    for (int row = GetNextItem(-1, LVNI_ALL); row != -1; row = GetNextItem(row, LVNI_ALL))
        if (GetCheck(row)) SetCheck(row, false);
}

LRESULT CVellumorView::OnKeyDown(WPARAM key, LPARAM) {
    if (key == VK_DELETE) RunCommand(ID_CLEAN);
    return Default();
}

LRESULT CVellumorView::OnLButtonDblClk(WPARAM, LPARAM) {
    OpenRegistryEditorAtRow(GetNextItem(-1, LVNI_FOCUSED));
    return Default();
}

LRESULT CVellumorView::OnRightClick(NMHDR&) {
    const CUniqueMenu menu(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_CONTEXT_MENU)));
    const HMENU popup = ::GetSubMenu(menu.Get(), 0);
    if (!HasRows())
        for (int position = 0; position < ::GetMenuItemCount(popup); ++position)
            ::EnableMenuItem(popup, ::GetMenuItemID(popup, position), MF_BYCOMMAND | MF_GRAYED);
    POINT cursor;
    ::GetCursorPos(&cursor);
    ::TrackPopupMenu(popup, 0, cursor.x, cursor.y, 0, GetSafeHwnd(), nullptr);
    return 0;
}

void CVellumorView::OnOpenRegistryEditor() { OpenRegistryEditorAtRow(GetSelectionMark()); }

void CVellumorView::OpenRegistryEditorAtRow(int row) {
    if (row < 0) return;
    const CWaitCursor wait;
    OpenRegistryEditorAt(GetItemText(row, columns::kKey));
}

std::span<const MessageRow> CVellumorView::Messages() const {
    static constexpr MessageRow kRows[] = {
        {WM_KEYDOWN, Handle<&CVellumorView::OnKeyDown>},
        {WM_LBUTTONDBLCLK, Handle<&CVellumorView::OnLButtonDblClk>},
        {WM_TIMER, Handle<&CVellumorView::OnTimer>},
        {WM_DESTROY, Handle<&CVellumorView::OnDestroy>},
        {WM_STAGE1_DONE, Handle<&CVellumorView::OnAnalysisMessage>, WM_ANALYZE_CANCELED},
        {WM_COMPACT_DONE, Handle<&CVellumorView::OnCompactDone>},
        {WM_BACKUP_DONE, Handle<&CVellumorView::OnBackupDone>},
    };
    return kRows;
}

std::span<const CommandRow> CVellumorView::Commands() const {
    static constexpr CommandRow kRows[] = {
        {ID_ANALYZE, Run<&CVellumorView::OnAnalyze>},
        {ID_CLEAN, Run<&CVellumorView::OnClean>, When<&CVellumorView::HasRows>},
        {ID_UNDO, Run<&CVellumorView::OnUndo>},
        {ID_COMPACT, Run<&CVellumorView::OnCompact>},
        {ID_BACKUP, Run<&CVellumorView::OnBackup>},
        {ID_RESTORE, Run<&CVellumorView::OnRestore>},
        {ID_CHECK, Run<&CVellumorView::OnCheck>, When<&CVellumorView::HasRows>},
        {ID_CHECK_ALL, Run<&CVellumorView::OnCheckAll>, When<&CVellumorView::HasRows>},
        {ID_UNCHECK, Run<&CVellumorView::OnUncheck>, When<&CVellumorView::HasRows>},
        {ID_OPEN_REGISTRY_EDITOR, Run<&CVellumorView::OnOpenRegistryEditor>},
    };
    return kRows;
}

std::span<const NotifyRow> CVellumorView::Notifications() const {
    static constexpr NotifyRow kRows[] = {
        {static_cast<UINT>(NM_RCLICK), Reflect<&CVellumorView::OnRightClick>},
    };
    return kRows;
}
