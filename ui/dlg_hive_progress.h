#pragma once

#include <atomic>

#include "framework/dialog.h"

/// A modal dialog with a busy bar that is shown while a worker thread is at the hives. The worker cannot be
/// canceled, so the dialog stays until the worker says that it has done its work or given it up.
class CDlgHiveProgress : public CDialog {
public:
    /// Forgets the former worker's end; to be called before the next one starts, which may be quick.
    void Prepare() { m_worker = Worker::Runs; }

    // The worker's last words, from its own thread: the next tick ends the dialog.
    void SetDone() { m_worker = Worker::IsDone; }
    void SetGivenUp() { m_worker = Worker::HasGivenUp; }

    /// Fills the bar and ends the dialog at once, where it is open.
    void Finish();

protected:
    /// @param bar     the busy bar's control id.
    /// @param period  milliseconds between two steps of it.
    CDlgHiveProgress(UINT templateId, int bar, UINT period)
        : CDialog(templateId), m_bar(bar), m_period(period) {}

    [[nodiscard]] bool OnInitDialog() override;
    void OnOK() override {}      // Enter
    void OnCancel() override {}  // Escape
    LRESULT OnTimer(WPARAM, LPARAM);
    LRESULT OnSetCursor(WPARAM, LPARAM);
    [[nodiscard]] std::span<const MessageRow> Messages() const override;

private:
    enum class Worker { Runs, IsDone, HasGivenUp };

    void End(int result);
    void StepBar() const;
    void FillBar() const;

    int m_bar;
    UINT m_period;
    std::atomic<Worker> m_worker = Worker::Runs;
};
