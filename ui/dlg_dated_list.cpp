#include "ui/dlg_dated_list.h"

#include <commctrl.h>

#include <ranges>

#include "resources/resource.h"
#include "ui/messages.h"
#include "ui/texts.h"

namespace {

constexpr int kNameColumn = 0;
constexpr int kDateColumn = 1;
constexpr int kNameWidth = 180;  // pixels
constexpr int kDateWidth = 215;

}  // namespace

CDialogList CDlgDatedList::List() const { return CDialogList(GetDlgItem(IDC_DATED_LIST)); }

bool CDlgDatedList::OnInitDialog() {
    CDialogList list = List();
    list.InsertColumn(kNameColumn, m_texts.columnName, kNameWidth);
    list.InsertColumn(kDateColumn, texts::kColumnDate, kDateWidth);
    list.SetExtendedStyle(LVS_EX_GRIDLINES | LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    Fill();
    EnableButtons();
    if (list.GetItemCount() > m_texts.mostWithoutWarning) ShowMessage(GetSafeHwnd(), m_texts.tooMany);
    return true;
}

void CDlgDatedList::Fill() {
    CDialogList list = List();
    for (const std::string& name : FindEntries()) {
        const int row = list.InsertItem(list.GetItemCount(), name.c_str());
        const std::optional<std::string> date = ShownDate(name);
        if (!date.has_value()) return;
        list.SetItemText(row, kDateColumn, date->c_str());
    }
}

void CDlgDatedList::EnableButtons() {
    const BOOL hasRows = List().GetItemCount() > 0 ? TRUE : FALSE;
    ::EnableWindow(GetDlgItem(IDOK), hasRows);
    ::EnableWindow(GetDlgItem(IDC_DELETE), hasRows);
}

std::vector<int> CDlgDatedList::CheckedRows() const {
    const CDialogList list = List();
    std::vector<int> rows;
    for (int row = list.GetNextItem(-1, LVNI_ALL); row != -1; row = list.GetNextItem(row, LVNI_ALL))
        if (list.GetCheck(row)) rows.push_back(row);
    return rows;
}

void CDlgDatedList::OnOK() {
    const std::vector<int> checked = CheckedRows();
    if (checked.empty()) return ShowMessage(GetSafeHwnd(), m_texts.chooseOne);
    if (checked.size() > 1) return ShowMessage(GetSafeHwnd(), m_texts.chooseOnlyOne);
    m_chosenName = List().GetItemText(checked.front(), kNameColumn);
    m_chosenDate = List().GetItemText(checked.front(), kDateColumn);
    if (AskYesNo(GetSafeHwnd(), m_texts.askChosen + m_chosenDate + "?")) EndDialog(IDOK);
}

void CDlgDatedList::OnDelete() {
    const std::vector<int> checked = CheckedRows();
    if (checked.empty()) return ShowMessage(GetSafeHwnd(), m_texts.chooseDelete);
    checked.size() == 1 ? DeleteOne(checked.front()) : DeleteSeveral(checked);
    EnableButtons();
}

void CDlgDatedList::DeleteOne(int row) {
    CDialogList list = List();
    const std::string name = list.GetItemText(row, kNameColumn);
    if (!AskYesNo(GetSafeHwnd(), m_texts.askDelete + name + texts::kAskDeleteEnd) || !DeleteEntry(name))
        return;
    list.DeleteItem(row);
    ShowMessage(GetSafeHwnd(), m_texts.deleted + name + texts::kDeletedEnd);
}

void CDlgDatedList::DeleteSeveral(const std::vector<int>& rows) {
    const std::string count = std::to_string(rows.size());
    if (!AskYesNo(GetSafeHwnd(), texts::kAskDeleteSelected + count + m_texts.askDeleteAll)) return;
    CDialogList list = List();
    // From the last one, so that the indices of the others stay true.
    for (const int row : std::views::reverse(rows))
        if (DeleteEntry(list.GetItemText(row, kNameColumn))) list.DeleteItem(row);
    // Deliberate: the number that was chosen, whatever became of each; what could not be deleted is still
    // shown.
    ShowMessage(GetSafeHwnd(), texts::kDeletedSelected + count + m_texts.deletedAll);
}

std::span<const CommandRow> CDlgDatedList::Commands() const {
    static constexpr CommandRow kRows[] = {
        {IDC_DELETE, Run<&CDlgDatedList::OnDelete>},
    };
    return kRows;
}
