#pragma once

#include <string>

/// Something that the shell can open: an address, a file.
class CHyperLink {
public:
    void SetTarget(const std::string& target) { m_target = target; }
    [[nodiscard]] bool HasTarget() const { return !m_target.empty(); }

    /// Opens the target in the program that the user has for it.
    /// @return the shell's answer: above 32 when something has been opened; 0 without a target.
    [[nodiscard]] int Navigate() const;

private:
    std::string m_target;
};
