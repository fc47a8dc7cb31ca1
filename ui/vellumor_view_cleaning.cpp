// The view's Clean command: it asks, repairs what the checked rows stand for, and takes the rows off the
// list.

#include <windows.h>

#include <commctrl.h>

#include <ranges>

#include "framework/wait_cursor.h"
#include "platform/host_services.h"
#include "repair/entry_rules.h"
#include "repair/repair_entry.h"
#include "repair/undo_files.h"
#include "ui/messages.h"
#include "ui/texts.h"
#include "ui/vellumor_view.h"

namespace {

bool AskToClean(HWND owner, const std::string& question) {
    return SystemActions().ShowMessage(owner, question.c_str(), texts::kCleanTitle,
                                       MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

}  // namespace

void CVellumorView::OnClean() {
    const CWaitCursor wait;
    const std::vector<int> rows = CheckedRows();
    if (rows.empty()) return ShowMessage(GetSafeHwnd(), texts::kCleanNothing);
    MakeUndoFileName();
    rows.size() == 1 ? CleanOne(rows.front()) : CleanSeveral(rows);
}

void CVellumorView::MakeUndoFileName() {
    const std::string fileName = ::MakeUndoFileName();
    // Two commands within a second share the file, and so the record of what is in it.
    if (fileName != m_undo.FileName()) m_undo = CUndoRecord(fileName);
}

std::vector<int> CVellumorView::CheckedRows() const {
    std::vector<int> rows;
    for (int row = GetNextItem(-1, LVNI_ALL); row != -1; row = GetNextItem(row, LVNI_ALL))
        if (GetCheck(row)) rows.push_back(row);
    return rows;
}

std::string CVellumorView::EntryTextOf(int row) const {
    return EntryText(GetItemText(row, columns::kKey), GetItemText(row, columns::kValueName));
}

void CVellumorView::CleanOne(int row) {
    if (!AskToClean(GetSafeHwnd(), texts::kAskCleanOne + EntryTextOf(row) + "?")) return;
    const std::string key = GetItemText(row, columns::kKey);
    RepairRow(row);
    Repaint();
    ShowMessage(GetSafeHwnd(), texts::kCleanedOne + key + texts::kCleanedOneEnd);
}

void CVellumorView::CleanSeveral(const std::vector<int>& rows) {
    const std::string count = std::to_string(rows.size());
    if (!AskToClean(GetSafeHwnd(), texts::kAskCleanSeveral + count + texts::kAskCleanSeveralEnd)) return;
    SetRedraw(false);
    // From the last one, so that the indices of the others stay true.
    for (const int row : std::views::reverse(rows)) RepairRow(row);
    SetRedraw(true);
    Repaint();
    ShowMessage(GetSafeHwnd(), count + texts::kCleanedSeveral);
}

void CVellumorView::RepairRow(int row) {
    // Deliberate: the row goes whatever came of it; the next analysis shows what is still there.
    (void)RepairEntry(EntryTextOf(row), m_undo);
    DeleteItem(row);
}

void CVellumorView::Repaint() {
    ::InvalidateRect(GetSafeHwnd(), nullptr, TRUE);
    ::UpdateWindow(GetSafeHwnd());
}
