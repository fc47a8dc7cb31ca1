#include "console/terminal.h"

#include "console/text_table_rules.h"

namespace {

constexpr char kRefused[] = "Standard output cannot be written";

}  // namespace

bool Ask(CTerminal& terminal, const std::string& question) {
    terminal.WriteError(Printable(question) + " [y/N] ");
    const std::string answer = terminal.ReadAnswer();
    return answer.starts_with('y') || answer.starts_with('Y');
}

void WriteErrorLine(CTerminal& terminal, std::string_view text) {
    terminal.WriteError(Printable(text) += '\n');
}

bool WriteOutputLine(CTerminal& terminal, std::string_view text) {
    if (terminal.WriteOutput(Printable(text) += '\n')) return true;
    // What was done must not stay unknown.
    WriteErrorLine(terminal, kRefused + std::string(": ") + std::string(text));
    return false;
}

bool WriteOutputText(CTerminal& terminal, std::string_view text) {
    if (terminal.WriteOutput(text)) return true;
    WriteErrorLine(terminal, kRefused + std::string("."));
    return false;
}
