#pragma once

#include "ui/dlg_dated_list.h"

/// The backups of the registry, of which the user restores one or deletes some.
class CDlgRestore : public CDlgDatedList {
public:
    CDlgRestore();

protected:
    [[nodiscard]] std::vector<std::string> FindEntries() const override;
    [[nodiscard]] std::optional<std::string> ShownDate(const std::string& name) const override;
    [[nodiscard]] bool DeleteEntry(const std::string& name) const override;
};
