#include <sstream>

#include "console/check_selection.h"
#include "console/code_page.h"
#include "console/commands.h"
#include "console/found_rows.h"
#include "console/output_file.h"
#include "console/rights.h"
#include "console/text_table_rules.h"

namespace {

constexpr std::size_t kWideEnough = 160;  // for all columns in one line

/// For a terminal that is too narrow for all columns: below each row a line that tells check and reason; for
/// the time there is no room.
std::string NarrowRowTable(const std::vector<Row>& rows, std::size_t width) {
    std::vector<std::vector<std::string>> lines{{"KEY", "VALUE", "DATA"}};
    for (const Row& row : rows)
        lines.push_back({Printable(ToUtf8(row.key)), Printable(ToUtf8(row.valueName)),
                         Printable(ToUtf8(row.dataReference))});
    std::istringstream table(TextTable(lines, width));
    std::string line;
    std::getline(table, line);
    std::string text = line + "\n";
    for (const Row& row : rows) {
        std::getline(table, line);
        text += line + "\n" + Shortened("    " + row.check + ": " + row.reason, width) + "\n";
    }
    return text;
}

std::string RowTable(const std::vector<Row>& rows, std::size_t width) {
    if (width < kWideEnough) return NarrowRowTable(rows, width);
    std::vector<std::vector<std::string>> lines{{"KEY", "WRITTEN (UTC)", "VALUE", "DATA", "CHECK", "REASON"}};
    for (const Row& row : rows) {
        std::vector<std::string>& cells = lines.emplace_back();
        for (const std::string* text :
             {&row.key, &row.writeTime, &row.valueName, &row.dataReference, &row.check, &row.reason})
            cells.push_back(Printable(ToUtf8(*text)));
    }
    return TextTable(lines, width);
}

std::string TextOf(const FoundRows& found, const AnalyzeOptions& options, std::optional<std::size_t> width) {
    if (options.format.has_value()) return WriteRows(found.rows, *options.format, found.isComplete);
    if (found.rows.empty()) return {};
    const bool isCut = options.output.empty() && width.has_value();
    return RowTable(found.rows, isCut ? *width : kAnyWidth);
}

/// Writes the rows to where they are wanted. @return false when they are not all there, which is told then.
bool PutOut(CTerminal& terminal, const std::string& text, const AnalyzeOptions& options, COutputFile& file) {
    using End = COutputFile::End;
    const End end = !options.output.empty()      ? file.Finish(text)
                    : terminal.WriteOutput(text) ? End::InPlace
                                                 : End::Deleted;
    if (end == End::Beside)
        WriteErrorLine(terminal, ToUtf8(options.output) + " cannot be replaced; the rows are in " +
                                     ToUtf8(file.PartialPath()) + ".");
    if (end == End::Deleted) WriteErrorLine(terminal, "The rows could not all be written.");
    return end == End::InPlace;
}

std::string FoundText(const FoundRows& found) {
    const std::string count = found.rows.empty() ? "No invalid entry"
                              : found.rows.size() == 1
                                  ? "1 invalid entry"
                                  : std::to_string(found.rows.size()) + " invalid entries";
    return count + " found" + (found.isComplete ? "." : " by then; the analysis was canceled.");
}

}  // namespace

ExitCode RunAnalyze(CTerminal& terminal, const AnalyzeOptions& options) {
    if (!HasRights(terminal)) return ExitCode::RightsMissing;
    COutputFile file;
    if (!options.output.empty() && !file.Open(options.output)) {
        WriteErrorLine(terminal, ToUtf8(options.output) + " cannot be written.");
        return ExitCode::Failed;
    }
    const std::optional<FoundRows> found = FindRows(terminal, options.choice);
    if (!found.has_value()) return ExitCode::Failed;
    const std::string text = TextOf(*found, options, terminal.OutputWidth());
    if (!PutOut(terminal, text, options, file)) return ExitCode::Failed;
    WriteErrorLine(terminal, FoundText(*found));
    if (!found->isComplete) return ExitCode::Canceled;
    return found->rows.empty() ? ExitCode::Done : ExitCode::RowsFound;
}

ExitCode RunChecks(CTerminal& terminal) {
    std::vector<std::vector<std::string>> lines{{"NAME", "AREA", "ROWS"}};
    for (const Check& check : AllChecks()) lines.push_back({check.name, check.area, check.meaning});
    const std::string table = TextTable(lines, terminal.OutputWidth().value_or(kAnyWidth));
    return WriteOutputText(terminal, table) ? ExitCode::Done : ExitCode::Failed;
}
