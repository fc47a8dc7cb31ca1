#pragma once

#include <optional>
#include <string>

#include "tests/hostile/picture.h"

/// Tells of what a cleaning and its replay left changed why that may be so: what an export leaves out, and
/// what it writes in another form.
class CNotReturned {
public:
    /// @param before  the registry before the cleaning, which has to outlive this.
    explicit CNotReturned(const Picture& before) : m_before(before) {}

    /// @return the kind of the reason; nothing: the change should not be there.
    [[nodiscard]] std::optional<std::string> ReasonFor(const Change& change) const;

private:
    [[nodiscard]] std::optional<std::string> ReasonForKeyGone(const std::wstring& key) const;
    [[nodiscard]] std::optional<std::string> ReasonForKeyNew(const std::wstring& key) const;
    [[nodiscard]] std::optional<std::string> ReasonForValueGone(const Change& change) const;
    [[nodiscard]] std::optional<std::string> ReasonForValueChanged(const Change& change) const;
    [[nodiscard]] std::optional<std::string> ReasonForValueNew(const Change& change) const;

    const Picture& m_before;
};
