#include "console/check_selection.h"

#include <algorithm>

CCheckSelection::CCheckSelection(const std::vector<std::string>& only, const std::vector<std::string>& skip)
    : m_names(only.begin(), only.end()) {
    if (only.empty())
        for (const Check& check : AllChecks()) m_names.insert(check.name);
    for (const std::string& name : skip) m_names.erase(name);
}

bool CCheckSelection::Includes(std::string_view checkName) const { return m_names.contains(checkName); }

bool IsCheck(std::string_view name) {
    return std::ranges::any_of(AllChecks(), [name](const Check& check) { return check.name == name; });
}
