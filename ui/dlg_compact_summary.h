#pragma once

#include "framework/dialog.h"

/// Shows the hives that a compaction has made smaller files for, with their sizes before and after.
class CDlgCompactSummary : public CDialog {
public:
    CDlgCompactSummary();

protected:
    [[nodiscard]] bool OnInitDialog() override;
};
