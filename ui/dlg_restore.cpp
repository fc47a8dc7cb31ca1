#include "ui/dlg_restore.h"

#include "hives/backup_folder.h"
#include "repair/undo_name_rules.h"
#include "resources/resource.h"

namespace {

constexpr DatedListTexts kTexts{
    .columnName = "Registry Backup Files",
    .tooMany =
        "Too many registry backup files will take up more hard disk space. Backup file deleting "
        "recommended.",
    .mostWithoutWarning = 3,
    .chooseOne = "Select one backup file to restore.",
    .chooseOnlyOne = "Can not restore backup made on different time once.",
    .askChosen = "Restore the registry backup on ",
    .chooseDelete = "Select at least one back file to delete.",
    .askDelete = "Delete the registry backup file: ",
    .deleted = "Registry backup file: ",
    .askDeleteAll = " registry backup files?",
    .deletedAll = " registry backup files deleted successfully.",
};

}  // namespace

CDlgRestore::CDlgRestore() : CDlgDatedList(IDD_RESTORE, kTexts) {}

std::vector<std::string> CDlgRestore::FindEntries() const { return FindBackups(); }

std::optional<std::string> CDlgRestore::ShownDate(const std::string& name) const {
    return DottedTimeAsDate(name);  // one that is no date is shown as it is
}

bool CDlgRestore::DeleteEntry(const std::string& name) const { return DeleteBackup(name); }
