#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/owners.h"

/// Counted libraries that are gone: the check "shared-modules" finds them, and cleaning deletes their values.
class CGoneModules {
public:
    explicit CGoneModules(std::size_t count);
    CGoneModules(const CGoneModules&) = delete;
    CGoneModules& operator=(const CGoneModules&) = delete;
    ~CGoneModules();

    /// How many values are still there.
    [[nodiscard]] std::size_t CountLeft() const;

private:
    CUniqueKey m_key;
    std::vector<std::string> m_names;
};
