#include "console/found_rows.h"

#include <algorithm>

#include "console/analysis_window.h"
#include "console/check_selection.h"
#include "console/glob_rules.h"
#include "console/interruption.h"
#include "console/progress_line.h"

namespace {

bool IsChosen(const RowChoice& choice, const Row& row) {
    if (!choice.match.empty() && !KeyMatches(choice.match, row.key)) return false;
    return std::ranges::none_of(choice.exclude,
                                [&row](const std::string& pattern) { return KeyMatches(pattern, row.key); });
}

}  // namespace

std::optional<FoundRows> FindRows(CTerminal& terminal, const RowChoice& choice) {
    using End = CAnalysisWindow::End;
    End end;
    FoundRows found;
    {
        CProgressLine line(terminal);
        CAnalysisWindow analysis([&line](const Progress& progress) { line.Show(progress); },
                                 [&choice](const Row& row) { return IsChosen(choice, row); });
        const CCheckSelection selection(choice.only, choice.skip);
        {
            const CCancelable cancelable(analysis.CancelEvent());
            end = analysis.Run(&selection);
        }
        // A cancel that comes behind the last key is one all the same. Asked here, where no further one can
        // set the event: it would be lost.
        found.isComplete = end == End::Done && !analysis.IsCanceled();
        found.rows = analysis.Rows();
    }
    if (end == End::Failed) {
        WriteErrorLine(terminal, "The analysis could not be run: the system refuses a window or a thread.");
        return std::nullopt;
    }
    return found;
}
