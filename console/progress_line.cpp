#include "console/progress_line.h"

#include "analysis/stages.h"
#include "console/code_page.h"
#include "console/text_table_rules.h"

namespace {

constexpr DWORD kPeriod = 150;  // milliseconds

std::string ElapsedText(DWORD milliseconds) {
    const DWORD seconds = milliseconds / 1000;
    const std::string rest = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

}  // namespace

CProgressLine::~CProgressLine() {
    if (m_shown > 0) m_terminal.WriteError("\r" + std::string(m_shown, ' ') + "\r");
}

void CProgressLine::Show(const Progress& progress) {
    if (!m_width.has_value()) return;
    const DWORD now = ::GetTickCount();
    if (m_shown > 0 && now - m_shownAt < kPeriod) return;
    m_shownAt = now;
    const std::string opening =
        "Stage " + std::to_string(progress.stage) + " of " + std::to_string(AnalysisStages().size()) + ", " +
        std::to_string(progress.rows) + " rows, " + ElapsedText(progress.elapsed) + ", ";
    const std::size_t room = *m_width > opening.size() ? *m_width - opening.size() : 0;
    Show(opening + Shortened(Printable(ToUtf8(progress.key)), room));
}

void CProgressLine::Show(const std::string& text) {
    if (!m_width.has_value()) return;
    std::string line = Shortened(text, *m_width);
    const std::size_t length = CountCharacters(line);
    // What a longer text before left behind is written over.
    if (length < m_shown) line.append(m_shown - length, ' ');
    m_terminal.WriteError("\r" + line);
    m_shown = length;
}
