#include <doctest/doctest.h>

#include "tests/repair/repair_bench.h"

namespace {

#define GUID "{01234567-89AB-CDEF-0123-456789ABCDEF}"

/// An entry, and the key that has to go when it is cleaned.
struct Row {
    const char* root;
    const char* unit;
    const char* below;      // where the entry is, below the unit
    const char* valueName;  // empty: an entry about the key
};

std::vector<std::string> OneExportOf(const CPlantedUnit& unit) { return {unit.KeyText()}; }

void CheckUnitGoes(const Row& row) {
    CAPTURE(std::string(row.unit));
    CAPTURE(std::string(row.below));
    const CRepairBench bench;
    const CPlantedUnit unit(row.root, row.unit);
    std::string entry = std::string("\\") + row.root + "\\" + row.unit + row.below;
    MakeKey(RootNamed(row.root), std::string(row.unit) + row.below);
    if (*row.valueName != '\0') entry += std::string("\\\"") + row.valueName + "\"";
    CHECK(bench.Repair(entry));
    CHECK_FALSE(unit.Exists());
    CHECK(unit.SurroundingsAreWhole());
    CHECK(bench.Exports() == OneExportOf(unit));
    const std::string text = bench.UndoText();
    CHECK(text.find("[" + unit.KeyText() + "]\r\n@=\"default\"\r\n\"named\"=\"text\"\r\n") !=
          std::string::npos);
    CHECK(text.find("[" + unit.KeyText() + "\\sub]\r\n\"deep\"=\"text\"\r\n") != std::string::npos);
}

}  // namespace

TEST_CASE("the unit of each kind of value entry goes, whatever value is named, and nothing beside it") {
    constexpr const char* kMachine = "HKEY_LOCAL_MACHINE";
    constexpr Row kRows[] = {
        {kMachine, R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application\Gone)", "", "EventMessageFile"},
        {kMachine, R"(Software\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18\Components\ABC)",
         "", "DEF"},
        {kMachine, R"(Software\Classes\CLSID\)" GUID, R"(\InprocServer32)", "CodeBase"},
        {kMachine, R"(Software\Classes\TypeLib\)" GUID, R"(\1.0\0\win32)", "x"},
        {kMachine, R"(Software\Classes\gone)", R"(\DefaultIcon)", "x"},
        {kMachine, R"(Software\Classes\gone)", R"(\shell\open\command)", "command"},
        {kMachine, R"(Software\Classes\gone)", R"(\Shell\open\Command)", "x"},
        {"HKEY_CURRENT_USER", R"(Software\Classes\CLSID\)" GUID, "", "x"},
        {"hkey_local_machine", R"(Software\Classes\CLSID\)" GUID, "", "x"},
    };
    for (const Row& row : kRows) {
        if (row.root[0] == 'h') {
            const CRepairBench bench;
            const CPlantedUnit unit("HKEY_LOCAL_MACHINE", row.unit);
            CHECK(bench.Repair(std::string("\\") + row.root + "\\" + row.unit + "\\\"x\""));
            CHECK_FALSE(unit.Exists());
            continue;
        }
        CheckUnitGoes(row);
    }
}

TEST_CASE("the unit of each kind of key entry goes, and nothing beside it") {
    constexpr const char* kMachine = "HKEY_LOCAL_MACHINE";
    constexpr const char* kUser = "HKEY_CURRENT_USER";
    constexpr const char* kClasses = "HKEY_CLASSES_ROOT";
    constexpr Row kRows[] = {
        {kClasses, R"(CLSID\)" GUID, "", ""},
        {kClasses, R"(TypeLib\)" GUID, "", ""},
        {kClasses, R"(Interface\)" GUID, "", ""},
        {kClasses, R"(CLSID\)" GUID R"(\InprocServer32)", "", ""},
        {kClasses, R"(CLSID\word)", "", ""},
        {kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs\Gone)",
         "", ""},
        {kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.gone)", "", ""},
        {kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.gone\OpenWithList)", "", ""},
        {kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\.gone)", "", ""},
        {kUser, R"(Software\Gone)", "", ""},
        {kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID, R"(\1.0)", ""},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\DefaultIcon)", ""},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\shell\open\command)", ""},
        {kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\gone.exe)", "", ""},
        {kMachine, R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache\Gone)", "", ""},
        {kMachine, R"(Software\Gone)", "", ""},
        {kMachine, R"(Software\Gone\Deeper)", "", ""},
        {"HKEY_USERS", R"(.Default\Software\Classes\gone)", R"(\DefaultIcon)", ""},
    };
    for (const Row& row : kRows) CheckUnitGoes(row);
}

TEST_CASE("a product's key without subkeys goes, one with subkeys stays") {
    const std::string products = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)";
    const std::string product = products + R"(\Gone)";
    const std::string entry = "\\HKEY_LOCAL_MACHINE\\" + product;
    SetValue(HKEY_LOCAL_MACHINE, product, "UninstallString", "x");
    MakeKey(HKEY_LOCAL_MACHINE, products + R"(\Beside)");
    {
        const CRepairBench bench;
        CHECK(bench.Repair(entry));
        CHECK_FALSE(KeyExists(HKEY_LOCAL_MACHINE, product));
        CHECK(KeyExists(HKEY_LOCAL_MACHINE, products + R"(\Beside)"));
        CHECK(bench.Exports() == std::vector<std::string>{"HKEY_LOCAL_MACHINE\\" + product});
    }
    SetValue(HKEY_LOCAL_MACHINE, product, "UninstallString", "x");
    MakeKey(HKEY_LOCAL_MACHINE, product + R"(\data)");
    const CRepairBench bench;
    // It answers to no later kind, so its default value is emptied.
    CHECK(bench.Repair(entry));
    CHECK(KeyExists(HKEY_LOCAL_MACHINE, product + R"(\data)"));
    CHECK(ValueExists(HKEY_LOCAL_MACHINE, product, "UninstallString"));
    CHECK(bench.Exports() ==
          std::vector<std::string>{"HKEY_LOCAL_MACHINE\\" + product, "HKEY_LOCAL_MACHINE\\" + product});
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, (product + R"(\data)").c_str());
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, product.c_str());
}

TEST_CASE("kinds of key entries do not take value entries, and the other way round") {
    // A program path's and a menu's values go one by one; a class under CLSID stays for a key entry.
    const std::string appPath = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\kept.exe)";
    const std::string userKey = R"(Software\Kept)";
    const std::string cls = R"(SOFTWARE\Classes\CLSID\)" GUID;
    SetValue(HKEY_LOCAL_MACHINE, appPath, "dead", "x");
    SetValue(HKEY_CURRENT_USER, userKey, "dead", "x");
    SetValue(HKEY_LOCAL_MACHINE, cls, "", "x");
    const CRepairBench bench;
    CHECK(bench.Repair("\\HKEY_LOCAL_MACHINE\\" + appPath + R"(\"dead")"));
    CHECK(KeyExists(HKEY_LOCAL_MACHINE, appPath));
    CHECK(bench.Repair("\\HKEY_CURRENT_USER\\" + userKey + R"(\"dead")"));
    CHECK(KeyExists(HKEY_CURRENT_USER, userKey));
    CHECK(bench.Repair("\\HKEY_LOCAL_MACHINE\\" + cls));
    CHECK(KeyExists(HKEY_LOCAL_MACHINE, cls));
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, appPath.c_str());
    ::RegDeleteKeyA(HKEY_CURRENT_USER, userKey.c_str());
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, cls.c_str());
}

TEST_CASE("kinds for the user's keys are not tried for other roots") {
    const std::string path = R"(.Default\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.kept)";
    SetValue(HKEY_USERS, path, "", "x");
    const CRepairBench bench;
    CHECK(bench.Repair("\\HKEY_USERS\\" + path));
    CHECK(KeyExists(HKEY_USERS, path));
    ::RegDeleteKeyA(HKEY_USERS, path.c_str());
}
