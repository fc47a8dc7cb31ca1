#include "console/terminal.h"

#include "console/text_table_rules.h"

bool Ask(CTerminal& terminal, const std::string& question) {
    terminal.WriteError(Printable(question) + " [y/N] ");
    const std::string answer = terminal.ReadAnswer();
    return answer.starts_with('y') || answer.starts_with('Y');
}

void WriteErrorLine(CTerminal& terminal, std::string_view text) {
    terminal.WriteError(Printable(text) += '\n');
}

bool WriteOutputLine(CTerminal& terminal, std::string_view text) {
    return terminal.WriteOutput(Printable(text) += '\n');
}
