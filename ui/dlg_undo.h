#pragma once

#include "ui/dlg_dated_list.h"

/// The undo files, of which the user replays one or deletes some.
class CDlgUndo : public CDlgDatedList {
public:
    CDlgUndo();

protected:
    [[nodiscard]] std::vector<std::string> FindEntries() const override;
    [[nodiscard]] std::optional<std::string> ShownDate(const std::string& name) const override;
    [[nodiscard]] bool DeleteEntry(const std::string& name) const override;
};
