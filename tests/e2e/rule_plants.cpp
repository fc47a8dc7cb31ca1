#include "tests/e2e/rule_plants.h"

#include <shlwapi.h>

#include <array>

#include "platform/owners.h"
#include "tests/driver/wait.h"

namespace {

// Rows show times of keys on different levels. Values are set so much later than the keys were created that a
// key's time differs, in full seconds, from the times of the keys above it.
constexpr DWORD kBetweenKeysAndValues = 1'100;  // milliseconds

bool KeyExists(HKEY root, const std::string& path) {
    CUniqueKey key;
    return ::RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
}

/// The first key of a path that is not there. @return the whole path when it ends in an existing key.
std::string FirstMissingKey(HKEY root, const std::string& path) {
    for (std::size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1))
        if (!KeyExists(root, path.substr(0, end))) return path.substr(0, end);
    return path;
}

std::string PathOf(const PlantGroup& group, const Plant& plant) {
    if (plant.subkey.empty()) return group.area;
    return group.area.empty() ? plant.subkey : group.area + "\\" + plant.subkey;
}

}  // namespace

CRulePlants::CRulePlants() {
    const std::array families{ClassPlants(), MachinePlants(), UserPlants()};
    const auto forEachPlant = [&families](auto visit) {
        for (const std::vector<PlantGroup>& groups : families)
            for (const PlantGroup& group : groups)
                for (const Plant& plant : group.plants) visit(group, plant);
    };
    try {
        forEachPlant([this](const PlantGroup& group, const Plant& plant) {
            CreateKey(group.root, PathOf(group, plant));
        });
        ::Sleep(kBetweenKeysAndValues);
        forEachPlant([this](const PlantGroup& group, const Plant& plant) {
            if (plant.isValue) SetValue(group.root, PathOf(group, plant), plant);
        });
    } catch (...) {
        Remove();
        throw;
    }
}

CRulePlants::~CRulePlants() { Remove(); }

void CRulePlants::Remove() {
    for (const Place& place : m_setValues) {
        CUniqueKey key;
        if (::RegOpenKeyExA(place.root, place.key.c_str(), 0, KEY_WRITE, key.Receive()) == ERROR_SUCCESS)
            ::RegDeleteValueA(key.Get(), place.valueName.c_str());
    }
    for (const Place& place : m_createdKeys) ::SHDeleteKeyA(place.root, place.key.c_str());
}

void CRulePlants::CreateKey(HKEY root, const std::string& path) {
    if (KeyExists(root, path)) return;
    m_createdKeys.push_back({root, FirstMissingKey(root, path), {}});
    CUniqueKey key;
    if (::RegCreateKeyA(root, path.c_str(), key.Receive()) != ERROR_SUCCESS)
        throw CDriverError("cannot create " + path);
}

void CRulePlants::SetValue(HKEY root, const std::string& path, const Plant& plant) {
    CUniqueKey key;
    if (::RegOpenKeyExA(root, path.c_str(), 0, KEY_READ | KEY_WRITE, key.Receive()) != ERROR_SUCCESS)
        throw CDriverError("cannot open " + path);
    if (::RegQueryValueExA(key.Get(), plant.name.c_str(), nullptr, nullptr, nullptr, nullptr) !=
        ERROR_FILE_NOT_FOUND)
        throw CDriverError("there is a value " + plant.name + " in " + path);
    m_setValues.push_back({root, path, plant.name});
    if (::RegSetValueExA(key.Get(), plant.name.c_str(), 0, plant.type,
                         reinterpret_cast<const BYTE*>(plant.data.data()),
                         static_cast<DWORD>(plant.data.size())) != ERROR_SUCCESS)
        throw CDriverError("cannot set " + plant.name + " in " + path);
}
