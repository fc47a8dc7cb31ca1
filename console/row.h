#pragma once

#include <string>

/// One row of an analysis, in the system code page like everything that comes from the registry.
struct Row {
    std::string key;            // path, with a leading backslash
    std::string writeTime;      // UTC; empty where the check tells none
    std::string valueName;      // empty: the row is about the key, or about its default value
    std::string dataReference;  // what is questionable about it; may be empty
    std::string check;          // name of the check that found it
    std::string reason;         // why, in plain words

    bool operator==(const Row&) const = default;
};
