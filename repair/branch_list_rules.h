#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

/// A branch as a line of an undo file's companion, line end included. Names of keys may hold any byte but
/// zero; what could end or disguise a line (every byte that is no printable ASCII) is written as a percent
/// sign and two hexadecimal digits, and so is the percent sign.
/// @param branch  a key's whole path, root name first.
[[nodiscard]] std::string BranchLine(std::string_view branch);

/// The branch of a line without its line end; nothing for a line that BranchLine does not write.
[[nodiscard]] std::optional<std::string> BranchOfLine(std::string_view line);

/// Gives two texts the same form exactly when the registry takes them for one name.
using FoldCase = std::string (*)(std::string_view text);

/// The branches that a companion lists.
class CBranchList {
public:
    explicit CBranchList(FoldCase fold) : m_fold(fold) {}

    /// Takes the branches of a companion's whole text. A last line without its end is not taken: it may be a
    /// part of a longer one, which would stand for more.
    /// @return false when a line is none that BranchLine writes.
    [[nodiscard]] bool Read(std::string_view companionText);

    /// Whether a key is one of the branches or lies in one.
    /// @param path  the key's whole path, root name first.
    [[nodiscard]] bool Holds(std::string_view path) const;

private:
    FoldCase m_fold;
    std::unordered_set<std::string> m_branches;
    std::unordered_set<std::string> m_folded;
};
