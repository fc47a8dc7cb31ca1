#include "console/cleaning.h"

#include <windows.h>

#include <ranges>
#include <set>
#include <tuple>

#include "console/code_page.h"
#include "platform/owners.h"
#include "repair/entry_rules.h"
#include "repair/undo_files.h"

namespace {

std::string EntryOf(const Row& row) { return EntryText(row.key, row.valueName); }

/// Rows as findings, to look others up among them.
class CFindings {
public:
    explicit CFindings(const std::vector<Row>& rows) {
        for (const Row& row : rows) m_findings.insert(FindingOf(row));
    }
    [[nodiscard]] bool Hold(const Row& row) const { return m_findings.contains(FindingOf(row)); }

private:
    // When the key was written, and in which words the reason is told, does not matter.
    using Finding = std::tuple<std::string, std::string, std::string, std::string>;
    [[nodiscard]] static Finding FindingOf(const Row& row) {
        return {row.key, row.valueName, row.dataReference, row.check};
    }

    std::set<Finding> m_findings;
};

/// Whether an entry's text names what the row's columns name. A double quote in a key or value name can make
/// it name something else.
bool IsNamedBy(const Row& row, const Entry& entry) {
    const std::string root = "\\" + entry.rootName;
    const std::string key = entry.subkeyPath.empty() ? root : root + "\\" + entry.subkeyPath;
    return key == row.key && entry.valueName.value_or("") == row.valueName;
}

const char* DeedText(Repair::Deed deed) {
    switch (deed) {
        case Repair::Deed::ValueDeleted:
            return "value deleted";
        case Repair::Deed::KeyRemoved:
            return "key removed";
        case Repair::Deed::DefaultEmptied:
            return "default emptied";
        case Repair::Deed::Nothing:
            break;
    }
    return "nothing";
}

}  // namespace

void CCleaning::Choose(const std::vector<Row>& found, const std::vector<Row>* named) {
    const CFindings wanted(named != nullptr ? *named : found);
    for (const Row& row : found)
        if (wanted.Hold(row)) Accept(row);
    if (named == nullptr) return;
    const CFindings present(found);
    for (const Row& row : *named)
        if (!present.Hold(row)) Refuse(row, "this machine has no such entry, or not one that is reported so");
}

void CCleaning::Accept(const Row& row) {
    const std::optional<Entry> entry = ParseEntry(EntryOf(row));
    if (!entry.has_value()) return Refuse(row, "a root key itself is never cleaned");
    if (!IsNamedBy(row, *entry)) return Refuse(row, "a double quote in its name makes it name another entry");
    m_rows.push_back(row);
}

void CCleaning::Refuse(const Row& row, const std::string& reason) {
    WriteErrorLine(m_terminal, "not cleaned: " + ToUtf8(EntryOf(row)) + ": " + reason);
    m_hasFailed = true;
}

void CCleaning::Tell(const char* opening, const Row& row, const Repair& repair) {
    const std::string entry = EntryOf(row);
    std::string line = opening + std::string(DeedText(repair.deed)) + ": " + ToUtf8(entry);
    // The key that goes with an entry can stand above it.
    if (!repair.key.empty() && repair.key != entry) line += " (with " + ToUtf8(repair.key) + ")";
    if (!WriteOutputLine(m_terminal, line)) m_hasFailed = true;
}

void CCleaning::Plan() {
    CRepairPlan plan;
    for (const Row& row : std::views::reverse(m_rows)) Tell("would be: ", row, plan.Of(EntryOf(row)));
}

bool CCleaning::Clean(const std::string& undoFile, void* cancelEvent) {
    CUndoRecord undo(undoFile, CUndoRecord::WithoutCopy::IsRefused);
    bool isCanceled = false;
    for (const Row& row : std::views::reverse(m_rows)) {
        isCanceled = ::WaitForSingleObject(cancelEvent, 0) == WAIT_OBJECT_0;
        if (isCanceled || !CleanRow(row, undo)) break;
    }
    TellUndoFile(undoFile);
    return !isCanceled;
}

bool CCleaning::CleanRow(const Row& row, CUndoRecord& undo) {
    const Repair repair = RepairEntry(EntryOf(row), undo);
    if (undo.HasFailed()) {
        Refuse(row, "no copy of it could be written, so neither it nor the rows behind it were cleaned");
        return false;
    }
    Tell("", row, repair);
    // An entry that went with one before it is no failure.
    if (repair) return true;
    const Repair stillToDo = PlanRepair(EntryOf(row));
    if (stillToDo || stillToDo.isRefused) Refuse(row, "it could not be changed");
    return true;
}

void CCleaning::TellUndoFile(const std::string& fileName) {
    if (DropEmptyUndoFile(fileName)) return;  // nothing was changed
    if (!WriteOutputLine(m_terminal, "Undo file: " + ToUtf8(fileName))) m_hasFailed = true;
}
