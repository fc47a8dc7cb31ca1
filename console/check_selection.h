#pragma once

#include <set>
#include <string>
#include <vector>

#include "analysis/check.h"

/// The checks that the command line chooses.
class CCheckSelection : public CCheckChoice {
public:
    /// @param only  names of the checks that run; empty: all.
    /// @param skip  names of those among them that do not.
    CCheckSelection(const std::vector<std::string>& only, const std::vector<std::string>& skip);

    [[nodiscard]] bool Includes(std::string_view checkName) const override;

private:
    std::set<std::string, std::less<>> m_names;
};

/// Whether a check has this name.
[[nodiscard]] bool IsCheck(std::string_view name);
