#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

/// What every planted key, value name or data carries, so that its rows can be told from the machine's own.
constexpr char kMark[] = "VmGold";

/// A key to be created, or a value to be set.
struct Plant {
    std::string subkey;  // of the group's area; "" for the area itself
    bool isValue = false;
    std::string name;
    DWORD type = REG_NONE;
    std::string data;  // all bytes, with the terminator that a text ends with
};

struct PlantGroup {
    HKEY root;
    std::string area;
    std::vector<Plant> plants;
};

/// A key that holds nothing of its own.
inline Plant Key(std::string subkey) { return {std::move(subkey), false, {}, REG_NONE, {}}; }
inline Plant Text(std::string subkey, std::string name, const std::string& text) {
    return {std::move(subkey), true, std::move(name), REG_SZ, text + '\0'};
}
inline Plant Number(std::string subkey, std::string name) {
    return {std::move(subkey), true, std::move(name), REG_DWORD, std::string("\1\0\0\0", 4)};
}
inline Plant Bytes(std::string subkey, std::string name, std::string bytes = "\1\2\3\4") {
    return {std::move(subkey), true, std::move(name), REG_BINARY, std::move(bytes)};
}

/// What is planted under HKEY_CLASSES_ROOT, for the class checks.
[[nodiscard]] std::vector<PlantGroup> ClassPlants();
/// What is planted for the checks of one machine-wide list, and of one user's list.
[[nodiscard]] std::vector<PlantGroup> MachinePlants();
[[nodiscard]] std::vector<PlantGroup> UserPlants();

/// Every rule of every check planted once, for as long as it lives. What was there before stays.
class CRulePlants {
public:
    /// @throws CDriverError when a value is already there, or cannot be set.
    CRulePlants();
    CRulePlants(const CRulePlants&) = delete;
    CRulePlants& operator=(const CRulePlants&) = delete;
    ~CRulePlants();

private:
    struct Place {
        HKEY root;
        std::string key;
        std::string valueName;
    };

    void Remove();
    void CreateKey(HKEY root, const std::string& path);
    void SetValue(HKEY root, const std::string& path, const Plant& plant);

    std::vector<Place> m_createdKeys;  // the topmost ones
    std::vector<Place> m_setValues;
};
