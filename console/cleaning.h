#pragma once

#include <string>
#include <vector>

#include "console/exit_code.h"
#include "console/row.h"
#include "console/terminal.h"
#include "repair/repair_entry.h"

/// One cleaning: it chooses its rows, tells or does what is to be done with them, and remembers failures.
class CCleaning {
public:
    explicit CCleaning(CTerminal& terminal) : m_terminal(terminal) {}

    /// Chooses the rows to clean among those that were found. Each row that is named but not found is
    /// refused.
    /// @param named  null: all that were found.
    void Choose(const std::vector<Row>& found, const std::vector<Row>* named);

    [[nodiscard]] std::size_t Count() const { return m_rows.size(); }
    /// Whether a row was refused or not cleaned, or could not be told.
    [[nodiscard]] bool HasFailed() const { return m_hasFailed; }

    /// Tells what cleaning would do.
    void Plan();

    /// Cleans from the last row to the first, as the window does, with one line for each. Stops at the first
    /// row whose copy cannot be written.
    /// @param undoFile     full path; there, and empty.
    /// @param cancelEvent  asked before each row; borrowed.
    /// @return whether it was not canceled.
    [[nodiscard]] bool Clean(const std::string& undoFile, void* cancelEvent);

private:
    void Accept(const Row& row);
    void Refuse(const Row& row, const std::string& reason);
    void Tell(const char* opening, const Row& row, const Repair& repair);
    /// @return whether the file goes on growing.
    bool CleanRow(const Row& row, CUndoRecord& undo);
    void TellUndoFile(const std::string& fileName);

    CTerminal& m_terminal;
    std::vector<Row> m_rows;  // in the order of the analysis
    bool m_hasFailed = false;
};
