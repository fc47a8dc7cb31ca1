#pragma once

#include <string_view>
#include <vector>

/// One check of the analysis, as people name it and read about it.
struct Check {
    const char* name;     // its title in the help, in lower case with hyphens, as in "shared-modules"
    const char* area;     // the part of the registry that it looks at
    const char* meaning;  // one line: what its rows are
    void (*run)();
};

/// A choice among the checks, by their names.
class CCheckChoice {
public:
    virtual ~CCheckChoice() = default;
    [[nodiscard]] virtual bool Includes(std::string_view checkName) const = 0;
};

/// Runs a check on the calling worker's thread, unless the channel's choice leaves it out. Its rows carry its
/// name.
void RunCheck(const Check& check);

/// All checks in the order in which they run first, each once.
[[nodiscard]] std::vector<Check> AllChecks();
