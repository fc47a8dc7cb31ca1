#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "tests/fuzz/fuzz_support.h"

/// Requires that a line that may be replayed orders nothing that the branches do not allow.
/// @param isInBranch  tells of a key's whole path whether it lies in one of them.
template <class IsInBranch>
void RequireHarmless(std::string_view line, IsInBranch isInBranch) {
    while (line.starts_with(' ') || line.starts_with('\t')) line.remove_prefix(1);
    if (line.starts_with('[')) {
        const std::size_t end = line.rfind(']');
        Require(end == std::string_view::npos || isInBranch(line.substr(1, end - 1)),
                "no line opens a key outside of the branches");
    }
    Require(!line.starts_with("@=-"), "no line deletes a default value");
    if (!line.starts_with('"')) return;
    std::size_t end = 1;
    while (end < line.size() && line[end] != '"') end += line[end] == '\\' ? 2 : 1;
    Require(end >= line.size() || !line.substr(end + 1).starts_with("=-"), "no line deletes a value");
}

/// The same of each line of a text, in which a carriage return ends a line, too.
template <class IsInBranch>
void RequireHarmlessLines(std::string_view text, IsInBranch isInBranch) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        RequireHarmless(text.substr(0, end), isInBranch);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// Whether a key is a branch or lies in it.
inline bool LiesIn(std::string_view branch, std::string_view path) {
    return path.starts_with(branch) && (path.size() == branch.size() || path[branch.size()] == '\\');
}
