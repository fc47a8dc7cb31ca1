#include <doctest/doctest.h>

#include <memory>

#include "platform/owners.h"
#include "tests/e2e/full_analysis.h"

namespace {

constexpr const char* kRootNames[] = {"HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER", "HKEY_USERS"};

HKEY RootNamed(const std::string& name) {
    const HKEY roots[] = {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_USERS};
    for (std::size_t index = 0; index < std::size(roots); ++index)
        if (name == kRootNames[index]) return roots[index];
    throw CDriverError("no root key is named " + name);
}

/// Takes the value that a row names out of the registry, and puts it back at the end.
class CTakenValue {
public:
    explicit CTakenValue(const ListRow& row) : m_name(row.valueName) {
        const std::size_t end = row.key.find('\\', 1);
        const std::string subkey = row.key.substr(end + 1);
        if (::RegOpenKeyExA(RootNamed(row.key.substr(1, end - 1)), subkey.c_str(), 0, KEY_READ | KEY_WRITE,
                            m_key.Receive()) != ERROR_SUCCESS)
            throw CDriverError("cannot open " + row.key);
        m_data.resize(kDataBytes);
        auto size = static_cast<DWORD>(m_data.size());
        // A value that two rows name, or that two paths lead to, is gone by the second time.
        if (::RegQueryValueExA(m_key.Get(), m_name.c_str(), nullptr, &m_type, m_data.data(), &size) !=
            ERROR_SUCCESS)
            m_key.Reset();
        m_data.resize(size);
        if (m_key) ::RegDeleteValueA(m_key.Get(), m_name.c_str());
    }
    CTakenValue(const CTakenValue&) = delete;
    CTakenValue& operator=(const CTakenValue&) = delete;
    ~CTakenValue() {
        if (!m_key) return;
        ::RegSetValueExA(m_key.Get(), m_name.c_str(), 0, m_type, m_data.data(),
                         static_cast<DWORD>(m_data.size()));
    }

private:
    static constexpr std::size_t kDataBytes = 4096;

    CUniqueKey m_key;
    std::string m_name;
    DWORD m_type = REG_NONE;
    std::vector<BYTE> m_data;
};

}  // namespace

TEST_CASE("an analysis that finds nothing says so, completed or canceled") {
    std::vector<std::unique_ptr<CTakenValue>> taken;
    for (const ListRow& row : FullAnalysis().rows) taken.push_back(std::make_unique<CTakenValue>(row));
    const FreshApp app;
    CHECK(RunAnalysis(app) == "Registry analyzing completed successfully, no invalid entry found.");
    CHECK(app.List().Count() == 0);
    CHECK(RunCanceledAnalysis(app, 0) == "Registry analyzing canceled, no invalid entry found.");
    CHECK(app.List().Count() == 0);
}
