#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "console/row.h"
#include "tests/hostile/picture.h"

/// What cleaning rows may change, told in the words of what rows mean: a row's value, the text of a default
/// value, a row's key, or the key of the class or product that it belongs to. Links in the paths are followed
/// up to the last name, as they lead when this is made.
class CExplained {
public:
    explicit CExplained(const std::vector<Row>& rows);

    [[nodiscard]] bool Holds(const Change& change) const;
    /// Whether a key lies in a branch that was written down before it was changed.
    [[nodiscard]] bool WasExported(const std::wstring& key) const;

private:
    void AddRow(const Row& row);

    std::set<std::wstring> m_units;                           // object names in small letters
    std::set<std::wstring> m_keys;                            // that rows name
    std::set<std::wstring> m_defaults;                        // keys whose default value may be emptied
    std::set<std::pair<std::wstring, std::string>> m_values;  // key, and name as it reads in a narrow call
};
