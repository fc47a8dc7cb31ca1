#pragma once

#include <string>
#include <vector>

#include "console/row.h"
#include "tests/console/console_bench.h"
#include "tests/support/scratch_key.h"

/// Counted libraries that are gone: the check "shared-modules" finds them, and cleaning deletes their values.
class CSharedModules {
public:
    explicit CSharedModules(std::initializer_list<const char*> names);
    CSharedModules(const CSharedModules&) = delete;
    CSharedModules& operator=(const CSharedModules&) = delete;
    ~CSharedModules();

    [[nodiscard]] HKEY Key() const { return m_key.Get(); }
    void Add(const std::string& path);
    [[nodiscard]] bool Has(const std::string& path) const;
    /// As the check reports one.
    [[nodiscard]] static Row RowOf(const std::string& path);
    [[nodiscard]] static std::string EntryOf(const std::string& path) {
        return RowOf(path).key + "\\\"" + path + "\"";
    }

private:
    CUniqueKey m_key;
    std::vector<std::string> m_paths;
};

/// The options that leave only these rows.
inline const std::vector<std::string> kOnlySharedModules = {"--only", "shared-modules"};
