#include "ui/dlg_compact_summary.h"

#include <commctrl.h>

#include "framework/list_ctrl.h"
#include "hives/compaction.h"
#include "hives/compaction_rules.h"
#include "resources/resource.h"
#include "ui/texts.h"

namespace {

struct Column {
    const char* heading;
    int width;  // pixels
};
constexpr Column kColumns[] = {
    {texts::kColumnPath, 350},
    {texts::kColumnSizeBefore, 90},
    {texts::kColumnSizeAfter, 90},
    {texts::kColumnRatio, 60},
};

void AddRow(CDialogList& list, const CompactedHive& hive) {
    const std::string cells[] = {SizeText(hive.bytesBefore), SizeText(hive.bytesAfter),
                                 RatioText(hive.bytesBefore, hive.bytesAfter)};
    const int row = list.InsertItem(list.GetItemCount(), hive.file.c_str());
    int column = 1;
    for (const std::string& cell : cells) list.SetItemText(row, column++, cell.c_str());
}

}  // namespace

CDlgCompactSummary::CDlgCompactSummary() : CDialog(IDD_COMPACT_SUMMARY) {}

bool CDlgCompactSummary::OnInitDialog() {
    CDialogList list(GetDlgItem(IDC_SUMMARY_LIST));
    int index = 0;
    for (const Column& column : kColumns) list.InsertColumn(index++, column.heading, column.width);
    list.SetExtendedStyle(LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
    for (const CompactedHive& hive : FindCompactedHives()) AddRow(list, hive);
    return true;
}
