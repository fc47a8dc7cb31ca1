#include "tests/console/shared_modules.h"

#include <doctest/doctest.h>

namespace {

constexpr char kKey[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\SharedDlls)";

}  // namespace

CSharedModules::CSharedModules(std::initializer_list<const char*> names) {
    REQUIRE(::RegCreateKeyA(HKEY_LOCAL_MACHINE, kKey, m_key.Receive()) == ERROR_SUCCESS);
    for (const char* name : names) Add(name);
}

CSharedModules::~CSharedModules() {
    for (const std::string& path : m_paths) ::RegDeleteValueA(m_key.Get(), path.c_str());
}

void CSharedModules::Add(const std::string& path) {
    SetText(m_key.Get(), path, "x");
    m_paths.push_back(path);
}

bool CSharedModules::Has(const std::string& path) const {
    return ::RegQueryValueExA(m_key.Get(), path.c_str(), nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

Row CSharedModules::RowOf(const std::string& path) {
    return {std::string(R"(\HKEY_LOCAL_MACHINE\)") + kKey,
            "",
            path,
            "",
            "shared-modules",
            "It names a program or library file that does not exist."};
}
