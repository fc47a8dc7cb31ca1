#include "tests/support/planted_hives.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <fstream>

#include "tests/support/native_calls.h"

namespace {

constexpr char kList[] = R"(SYSTEM\CurrentControlSet\Control\hivelist)";

std::string SmallLetters(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(::tolower(c)); });
    return text;
}

std::string DeviceOfDriveC() {
    char device[MAX_PATH] = "";
    REQUIRE(::QueryDosDeviceA("C:", device, sizeof device) != 0);
    return device;
}

}  // namespace

CPlantedHives::CPlantedHives() {
    OpenList();
    char name[16];
    DWORD bytes = sizeof name;
    REQUIRE(::RegEnumValueA(m_list.Get(), 0, name, &bytes, nullptr, nullptr, nullptr, nullptr) ==
            ERROR_NO_MORE_ITEMS);
    REQUIRE(Folder().starts_with("C:\\"));
}

CPlantedHives::~CPlantedHives() {
    OpenList();
    EmptyList();
}

void CPlantedHives::OpenList() {
    REQUIRE(::RegCreateKeyExA(HKEY_LOCAL_MACHINE, kList, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              m_list.Receive(), nullptr) == ERROR_SUCCESS);
}

void CPlantedHives::EmptyList() {
    char name[512];
    for (DWORD bytes = sizeof name;
         ::RegEnumValueA(m_list.Get(), 0, name, &bytes, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         bytes = sizeof name)
        if (::RegDeleteValueA(m_list.Get(), name) != ERROR_SUCCESS) return;
}

void CPlantedHives::RemoveList() { REQUIRE(DeleteOpenKey(m_list.Get())); }

std::string CPlantedHives::AddMachine(const std::string& name) {
    return Add(HKEY_LOCAL_MACHINE, "\\REGISTRY\\MACHINE\\", name);
}

std::string CPlantedHives::AddUser(const std::string& name) {
    return Add(HKEY_USERS, "\\REGISTRY\\USER\\", name);
}

std::string CPlantedHives::Add(HKEY root, const char* listRoot, const std::string& name) {
    const auto [place, isNew] = m_keys.try_emplace(name, root, name);
    REQUIRE(isNew);
    SetText(place->second.Get(), "marker", "of " + name);
    AddEntry(listRoot + name, DevicePath(name));
    WriteFileText(FilePath(name), "old " + name);
    m_files[SmallLetters(listRoot + name)] = FilePath(name);
    return FilePath(name);
}

void CPlantedHives::AddEntry(const std::string& name, const std::string& devicePath) {
    SetText(m_list.Get(), name, devicePath);
}

void CPlantedHives::RemoveEntry(const std::string& name) {
    REQUIRE(::RegDeleteValueA(m_list.Get(), name.c_str()) == ERROR_SUCCESS);
}

void CPlantedHives::AddBytes(const std::string& name, DWORD type, const std::string& bytes) {
    SetBytes(m_list.Get(), name, type, bytes);
}

std::string CPlantedHives::DevicePath(const std::string& name) const {
    return DeviceOfDriveC() + FilePath(name).substr(2);
}

void WriteFileText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}
