#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "framework/list_view.h"
#include "platform/owners.h"
#include "repair/undo_record.h"
#include "ui/dlg_analyze.h"
#include "ui/dlg_hive_progress.h"
#include "ui/row_batch.h"

/// The columns of the result list, from the left.
namespace columns {

inline constexpr int kKey = 0;
inline constexpr int kWriteTime = 1;
inline constexpr int kValueName = 2;
inline constexpr int kData = 3;

}  // namespace columns

/// The result list: the one place where the rows of an analysis are kept, each with a check box. It starts
/// the analysis, receives what the workers send, and runs the commands on rows.
class CVellumorView : public CListView, private CAnalysisHost {
public:
    void OnInitialUpdate() override;

    /// Whether the list holds a row.
    [[nodiscard]] bool HasRows() const;

protected:
    [[nodiscard]] DWORD ListStyle() const override { return LVS_REPORT; }
    [[nodiscard]] std::span<const MessageRow> Messages() const override;
    [[nodiscard]] std::span<const CommandRow> Commands() const override;
    [[nodiscard]] std::span<const NotifyRow> Notifications() const override;

private:
    // Commands.
    void OnAnalyze();
    void OnClean();
    void OnUndo();
    void OnBackup();
    void OnRestore();
    void OnCompact();
    void OnCheck();
    void OnCheckAll();
    void OnUncheck();
    void OnOpenRegistryEditor();

    // Keyboard and mouse.
    LRESULT OnKeyDown(WPARAM, LPARAM);
    LRESULT OnLButtonDblClk(WPARAM, LPARAM);
    LRESULT OnRightClick(NMHDR&);

    // The analysis.
    LRESULT OnAnalysisMessage(WPARAM, LPARAM);
    void TakeRow(const AnalysisChannel& channel, const AnalysisContext&) override;
    void TakeProgress(const char* keyPath) override;
    void TakeDone() override;
    void TakeCanceled() override;
    LRESULT OnTimer(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    void EndFormerAnalysis();
    void WaitForWorker();
    void ShowResult(const char* opening);

    // Hives.
    LRESULT OnBackupDone(WPARAM, LPARAM);
    LRESULT OnCompactDone(WPARAM, LPARAM);
    void RunHiveWorker(UINT (*worker)(void*), CDlgHiveProgress& dialog);

    // Cleaning.
    [[nodiscard]] std::vector<int> CheckedRows() const;
    [[nodiscard]] std::string EntryTextOf(int row) const;
    void MakeUndoFileName();
    void CleanOne(int row);
    void CleanSeveral(const std::vector<int>& rows);
    void RepairRow(int row);
    void Repaint();

    void OpenRegistryEditorAtRow(int row);
    [[nodiscard]] HWND OwnerWindow() const { return ::GetAncestor(GetSafeHwnd(), GA_ROOT); }

    CAnalysisRun m_analysis{*this};  // also of the hive threads
    CRowBatch m_batch{*this};
    bool m_isClosing = false;
    CUndoRecord m_undo{""};  // of the Clean command that runs or ran last
};

/// The analysis dialog; one for the whole process, like the channel that its texts come through.
[[nodiscard]] CDlgAnalyze& AnalyzeDialog();
