#include "tests/e2e/gone_modules.h"

#include <algorithm>

#include "tests/driver/wait.h"
#include "tests/support/scratch_key.h"

CGoneModules::CGoneModules(std::size_t count) {
    if (::RegCreateKeyA(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\SharedDlls)",
                        m_key.Receive()) != ERROR_SUCCESS)
        throw CDriverError("the key of counted libraries cannot be opened");
    for (std::size_t number = 0; number < count; ++number) {
        // Long names, so that some thousands fill more than a pipe takes at once.
        m_names.push_back(R"(C:\gone\)" + std::string(180, 'x') + std::to_string(number) + ".dll");
        SetText(m_key.Get(), m_names.back(), "x");
    }
}

CGoneModules::~CGoneModules() {
    for (const std::string& name : m_names) ::RegDeleteValueA(m_key.Get(), name.c_str());
}

std::size_t CGoneModules::CountLeft() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_names, [this](const std::string& name) {
        return ::RegQueryValueExA(m_key.Get(), name.c_str(), nullptr, nullptr, nullptr, nullptr) ==
               ERROR_SUCCESS;
    }));
}
