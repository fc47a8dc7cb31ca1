#pragma once

#include <string>
#include <vector>

#include "console/row.h"
#include "tests/driver/console_program.h"
#include "tests/support/scratch_folder.h"

/// A copy of the program for scripts in a folder of its own, which is where its undo files are, too.
class CHostProgram {
public:
    CHostProgram();

    [[nodiscard]] const std::string& Folder() const { return m_folder.Path(); }

    [[nodiscard]] ConsoleResult Run(const std::string& arguments, const std::string& input = "") const;

    /// Runs an analysis and checks that it came to its end.
    /// @return the rows of what was planted.
    [[nodiscard]] std::vector<Row> Analyze(const std::string& choice) const;

    /// The name of the one undo file.
    [[nodiscard]] std::string UndoFile() const;

private:
    CScratchFolder m_folder;
};

/// Whether a row is of something that was planted.
[[nodiscard]] bool IsPlanted(const Row& row);

/// Checks that an analysis came to its end and wrote all of its rows, each with a key that can be named.
/// @return the rows of what was planted.
std::vector<Row> CheckAnalysis(const ConsoleResult& result);
