#include <windows.h>

#include "console/cleaning.h"
#include "console/code_page.h"
#include "console/commands.h"
#include "console/found_rows.h"
#include "console/interruption.h"
#include "console/named_rows.h"
#include "console/rights.h"
#include "platform/owners.h"
#include "repair/undo_files.h"

namespace {

/// The checks that are to be run again to see whether the named rows are true here.
RowChoice ChecksOf(const std::vector<Row>& rows) {
    RowChoice choice;
    for (const Row& row : rows) choice.only.push_back(row.check);
    return choice;
}

bool IsAgreed(CTerminal& terminal, const CleanOptions& options, std::size_t count) {
    if (options.yes) return true;
    return Ask(terminal, "Clean " + std::to_string(count) + (count == 1 ? " entry?" : " entries?"));
}

ExitCode CleanChosen(CTerminal& terminal, CCleaning& cleaning) {
    const std::optional<std::string> undoFile = ClaimUndoFile();
    if (!undoFile.has_value()) {
        WriteErrorLine(
            terminal, "No undo file can be written in " + ToUtf8(UndoFolder()) + ", so nothing was cleaned.");
        return ExitCode::Failed;
    }
    const CUniqueHandle cancelEvent(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const CCancelable cancelable(cancelEvent.Get());
    const bool isComplete = cleaning.Clean(*undoFile, cancelEvent.Get());
    if (!isComplete) {
        WriteErrorLine(terminal, "Canceled; the entries that are not listed above were not cleaned.");
        return ExitCode::Canceled;
    }
    return cleaning.HasFailed() ? ExitCode::Failed : ExitCode::Done;
}

}  // namespace

ExitCode RunClean(CTerminal& terminal, const CleanOptions& options) {
    if (!options.dryRun && !options.yes && !terminal.CanAsk()) {
        WriteErrorLine(terminal, "There is nobody to be asked here: add --yes, or --dry-run.");
        return ExitCode::WrongUsage;
    }
    if (!HasRights(terminal)) return ExitCode::RightsMissing;
    const bool areNamed = !options.rows.empty();
    std::optional<std::vector<Row>> named;
    if (areNamed) {
        named = ReadNamedRows(terminal, options.rows);
        if (!named.has_value()) return ExitCode::Failed;
        if (named->empty()) return ExitCode::Done;
    }
    const std::optional<FoundRows> found = FindRows(terminal, areNamed ? ChecksOf(*named) : options.choice);
    if (!found.has_value()) return ExitCode::Failed;
    if (!found->isComplete) {
        WriteErrorLine(terminal, "Canceled; nothing was cleaned.");
        return ExitCode::Canceled;
    }
    CCleaning cleaning(terminal);
    cleaning.Choose(found->rows, areNamed ? &*named : nullptr);
    if (options.dryRun) {
        cleaning.Plan();
        if (cleaning.HasFailed()) return ExitCode::Failed;
        return cleaning.Count() > 0 ? ExitCode::RowsFound : ExitCode::Done;
    }
    if (cleaning.Count() == 0) return cleaning.HasFailed() ? ExitCode::Failed : ExitCode::Done;
    if (!IsAgreed(terminal, options, cleaning.Count())) {
        WriteErrorLine(terminal, "Nothing was cleaned.");
        return ExitCode::Canceled;
    }
    return CleanChosen(terminal, cleaning);
}
