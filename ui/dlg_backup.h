#pragma once

#include "ui/dlg_hive_progress.h"

/// The progress dialog of a backup: besides the busy bar, one that counts the hives that are saved.
class CDlgBackup : public CDlgHiveProgress {
public:
    CDlgBackup();

    /// Counts one more hive; from the worker's thread. Does nothing while the dialog is not open.
    void StepHives() const;

protected:
    [[nodiscard]] bool OnInitDialog() override;
    [[nodiscard]] std::span<const MessageRow> Messages() const override;

private:
    LRESULT OnDestroy(WPARAM, LPARAM);

    std::atomic<HWND> m_hivesBar = nullptr;
};

/// The one dialog of its kind, which every backup runs again.
[[nodiscard]] CDlgBackup& BackupDialog();
