#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/exit_code.h"
#include "console/terminal.h"

/// Things that are named by the time at which they were made: undo files, or backups.
struct DatedNames {
    std::vector<std::string> (*find)();
    std::optional<std::string> (*date)(std::string_view name);  // nothing: the name tells none
    bool (*erase)(const std::string& name);
    const char* kind;  // what one of them is called
};

/// Lists them with their dates.
[[nodiscard]] ExitCode ListNames(CTerminal& terminal, const DatedNames& names);

/// Whether one has this name, in any letter case; tells when none has. A name that leads to another folder is
/// none.
[[nodiscard]] bool IsName(CTerminal& terminal, const DatedNames& names, const std::string& name);

/// Deletes those that are named, and tells of each what became of it.
[[nodiscard]] ExitCode DeleteNames(CTerminal& terminal, const DatedNames& names,
                                   const std::vector<std::string>& wanted);
