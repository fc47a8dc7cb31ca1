#include "ui/dlg_compact.h"

#include "resources/resource.h"

namespace {

constexpr UINT kTimerPeriod = 200;  // milliseconds

}  // namespace

CDlgCompact& CompactDialog() {
    static CDlgCompact dialog;
    return dialog;
}

CDlgCompact::CDlgCompact() : CDlgHiveProgress(IDD_COMPACT, IDC_COMPACT_PROGRESS, kTimerPeriod) {}
