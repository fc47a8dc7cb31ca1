#include "ui/dlg_undo.h"

#include "repair/undo_files.h"
#include "repair/undo_name_rules.h"
#include "resources/resource.h"

namespace {

constexpr DatedListTexts kTexts{
    .columnName = "Registry Undo File",
    .tooMany =
        "Too many registry undo files will take up more hard disk space. Undo file deleting recommended.",
    .mostWithoutWarning = 10,
    .chooseOne = "Select one undo file to recover.",
    .chooseOnlyOne = "Can not undo repair made on different time once.",
    .askChosen = "Undo the selected registry repair on ",
    .chooseDelete = "Select at least one undo file to delete.",
    .askDelete = "Delete the registry undo file: ",
    .deleted = "Registry undo file: ",
    .askDeleteAll = " registry undo files?",
    .deletedAll = " registry undo files deleted successfully.",
};

}  // namespace

CDlgUndo::CDlgUndo() : CDlgDatedList(IDD_UNDO, kTexts) {}

std::vector<std::string> CDlgUndo::FindEntries() const { return FindUndoFiles(); }

std::optional<std::string> CDlgUndo::ShownDate(const std::string& name) const { return ShownUndoDate(name); }

bool CDlgUndo::DeleteEntry(const std::string& name) const { return DeleteUndoFile(name); }
