#pragma once

#include <windows.h>

#include <string>

#include "console/analysis_window.h"
#include "console/terminal.h"

/// One line on standard error's terminal that tells how far a command is, written over itself a few times a
/// second. Where standard error is no terminal it writes nothing.
class CProgressLine {
public:
    explicit CProgressLine(CTerminal& terminal) : m_terminal(terminal), m_width(terminal.ErrorWidth()) {}
    CProgressLine(const CProgressLine&) = delete;
    CProgressLine& operator=(const CProgressLine&) = delete;
    /// Takes the line away.
    ~CProgressLine();

    /// Shows how far an analysis is, unless that was shown just now.
    void Show(const Progress& progress);
    /// Shows a printable text at once.
    void Show(const std::string& text);

private:
    CTerminal& m_terminal;
    std::optional<std::size_t> m_width;
    std::size_t m_shown = 0;  // characters
    DWORD m_shownAt = 0;      // milliseconds of the system's tick count
};
