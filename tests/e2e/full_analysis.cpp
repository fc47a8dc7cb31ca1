#include "tests/e2e/full_analysis.h"

#include <exception>
#include <memory>

#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/planted_values.h"

namespace {

/// Whether something is drawn where the first row shows its key.
bool FirstRowIsDrawn(const CRemoteList& list) {
    RECT cell = list.CellRect(0, 0);
    ::MapWindowPoints(list.Window(), nullptr, reinterpret_cast<POINT*>(&cell), 2);
    // Inside the grid lines.
    ::InflateRect(&cell, -2, -2);
    return IsDrawnOn(cell);
}

class CObserver {
public:
    explicit CObserver(AnalysisRecord& record) : m_record(record), m_app(VellumorExe()) {}

    [[nodiscard]] CAppDriver& App() { return m_app; }

    void Run() {
        const CProgressDialog dialog = StartAnalysis(m_app);
        m_record.ownerWasEnabled = ::IsWindowEnabled(m_app.Frame()) != FALSE;
        const auto boxIsShown = [&] {
            LookAtDialog(dialog);
            LookAtList(dialog);
            return m_app.ShownMessageBox().has_value();
        };
        WaitFor("the end of the analysis", boxIsShown, kAnalysisPatience);
        LookAtBox(dialog);
        m_record.rows = m_app.List().Rows();
        m_record.checkedRows = m_app.List().CheckedRows();
        TakePicture("rows");
    }

private:
    void LookAtDialog(const CProgressDialog& dialog) {
        const std::string currentKey = dialog.CurrentKey();
        const std::string lastKey = dialog.LastKey();
        const int position = dialog.BarPosition();
        // All three belong together, and an ended dialog would answer with nothing.
        if (!dialog.IsShown()) return;
        m_record.currentKeys.insert(currentKey);
        m_record.lastKeys.insert(lastKey);
        m_record.barPositions.insert(position);
        if (position == kPictureAt && !m_pictureIsTaken) m_pictureIsTaken = TakePicture("progress");
    }

    void LookAtList(const CProgressDialog& dialog) {
        const int count = m_app.List().Count();
        if (m_record.counts.empty() || m_record.counts.back() != count) {
            m_record.counts.push_back(count);
            m_lastRowAt = ::GetTickCount();
        }
        if (count == 0) return;
        if (::GetTickCount() - m_lastRowAt > kQuiet) CompareLastKey(dialog, count);
        if (!m_record.rowsWereDrawn)
            m_record.rowsWereDrawn = FirstRowIsDrawn(m_app.List()) && dialog.IsShown();
    }

    void CompareLastKey(const CProgressDialog& dialog, int count) {
        const std::string newest = m_app.List().Cell(count - 1, 0);
        const std::string shown = dialog.LastKey();
        if (m_app.List().Count() != count || !dialog.IsShown()) return;  // things moved on meanwhile
        ++m_record.lastKeyComparisons;
        if (shown != newest) m_record.staleKeys.insert(shown);
    }

    void LookAtBox(const CProgressDialog& dialog) {
        const CMessageBox box = m_app.WaitForMessageBox();
        TakePicture("completed");
        m_record.caption = box.Caption();
        m_record.text = box.Text();
        m_record.buttons = box.Buttons();
        if (box.Icon() != nullptr) m_record.icon = ShownSystemIcon(box.Icon(), "information");
        ::Sleep(kSeveralTicks);  // the ended dialog's timer may still disturb the box
        m_record.boxOwnerWasEnabled = ::IsWindowEnabled(m_app.Frame()) != FALSE;
        m_record.commandRanBehindBox = RunsCommand();
        m_record.dialogWasHidden = !dialog.IsShown();
        box.Dismiss();
    }

    /// Tries a command that does no harm, and takes it back.
    bool RunsCommand() const {
        m_app.Post(commands::kToggleStatusBar);
        m_app.Settle();
        if (::IsWindowVisible(m_app.StatusBar()) != FALSE) return false;
        m_app.Post(commands::kToggleStatusBar);
        m_app.Settle();
        return true;
    }

    static constexpr DWORD kSeveralTicks = 500;  // milliseconds
    static constexpr int kPictureAt = 50;        // bar position, about a second into the analysis
    static constexpr DWORD kQuiet = 500;  // milliseconds; the texts are refreshed several times in that time

    AnalysisRecord& m_record;
    CAppDriver m_app;
    bool m_pictureIsTaken = false;
    DWORD m_lastRowAt = 0;
};

struct FullRun {
    FullRun() : planted(PlantedValues()), observer(record) { observer.Run(); }
    const CPlantedValues& planted;
    AnalysisRecord record;
    CObserver observer;
};

FullRun& TheRun() {
    static std::unique_ptr<FullRun> run;
    static std::exception_ptr failure;
    if (failure) std::rethrow_exception(failure);
    if (run) return *run;
    try {
        run = std::make_unique<FullRun>();
    } catch (...) {
        failure = std::current_exception();  // a second try would take as long and tell no more
        throw;
    }
    return *run;
}

}  // namespace

const AnalysisRecord& FullAnalysis() { return TheRun().record; }

CAppDriver& AnalyzedApp() { return TheRun().observer.App(); }
