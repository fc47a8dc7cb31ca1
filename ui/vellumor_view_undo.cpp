// The view's Undo command.

#include "repair/undo_files.h"
#include "ui/dlg_undo.h"
#include "ui/messages.h"
#include "ui/texts.h"
#include "ui/vellumor_view.h"

void CVellumorView::OnUndo() {
    CDlgUndo dialog;
    if (dialog.DoModal(OwnerWindow()) != IDOK || !ReplayUndoFile(dialog.ChosenName())) return;
    ShowMessage(GetSafeHwnd(), texts::kRepairUndone + dialog.ChosenDate() + texts::kRecovered);
}
