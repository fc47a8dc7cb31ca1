#pragma once

#include "ui/dlg_hive_progress.h"

/// The progress dialog of a compaction.
class CDlgCompact : public CDlgHiveProgress {
public:
    CDlgCompact();
};

/// The one dialog of its kind, which every compaction runs again.
[[nodiscard]] CDlgCompact& CompactDialog();
