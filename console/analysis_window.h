#pragma once

#include <functional>
#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "console/row.h"
#include "framework/wnd.h"

/// How far an analysis is.
struct Progress {
    std::size_t stage;  // of ten; counted from 1
    std::size_t rows;   // so far
    const char* key;    // never null; lasts during the call
    DWORD elapsed;      // milliseconds
};

/// Hosts an analysis without showing a window: its window receives messages only, and the rows are kept here.
class CAnalysisWindow : public CWnd, private CAnalysisHost {
public:
    enum class End { Done, Canceled, Failed };

    /// @param progress  told for every key that is examined; may be empty.
    /// @param isWanted  whether a row is kept; may be empty: all are.
    explicit CAnalysisWindow(std::function<void(const Progress&)> progress,
                             std::function<bool(const Row&)> isWanted = nullptr);

    /// Runs an analysis to its end.
    /// @param choice  the checks that run; null: all.
    /// @return Failed when the system refuses the window or a worker thread.
    [[nodiscard]] End Run(const CCheckChoice* choice);

    /// The rows of the last analysis in the order in which they were found; of a canceled one, those found
    /// by then.
    [[nodiscard]] const std::vector<Row>& Rows() const { return m_rows; }

    /// Signalled: the analysis is to end. Borrowed.
    [[nodiscard]] HANDLE CancelEvent() const { return m_analysis.CancelEvent(); }
    [[nodiscard]] bool IsCanceled() const { return m_analysis.IsCanceled(); }

protected:
    [[nodiscard]] std::span<const MessageRow> Messages() const override;

private:
    LRESULT OnAnalysisMessage(WPARAM, LPARAM);
    void TakeRow(const AnalysisChannel& channel, const AnalysisContext& context) override;
    void TakeProgress(const char* keyPath) override;
    void TakeDone() override;
    void TakeCanceled() override;
    void PumpMessages();

    CAnalysisRun m_analysis{*this};
    std::function<void(const Progress&)> m_progress;
    std::function<bool(const Row&)> m_isWanted;
    std::vector<Row> m_rows;
    DWORD m_startedAt = 0;  // milliseconds of the system's tick count
    bool m_hasEnded = false;
    End m_end = End::Failed;
};
