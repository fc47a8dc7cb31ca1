#include <doctest/doctest.h>

#include <algorithm>
#include <initializer_list>

#include "repair/kind_repairs.h"
#include "tests/repair/repair_bench.h"

namespace {

#define GUID "{01234567-89AB-CDEF-0123-456789ABCDEF}"

constexpr KindRepair kAllRepairs[] = {
    RepairClsidKey,           RepairTypeLibKey,   RepairDefaultIconClass, RepairShellCommandClass,
    RepairInstallerComponent, RepairAppPath,      RepairEventlogSource,   RepairUninstallKey,
    RepairMenuOrderKey,       RepairArpCacheKey,  RepairSoftwareKey,      RepairComFamilyKey,
    RepairFileExtsKey,        RepairRecentDocsKey};

/// An entry, the key that has to go with it, and the kinds that it is of.
struct Row {
    const char* root;
    const char* unit;
    const char* below;  // where the entry is, below the unit
    std::initializer_list<KindRepair> kinds;
};

/// Runs one repair on a freshly planted entry.
void CheckRepair(const Row& row, std::size_t index) {
    CAPTURE(index);
    const CScratchFolder folder;
    const std::string undoFile = folder.Path() + "\\undo.reg";
    const CPlantedUnit unit(row.root, row.unit);
    const std::string path = std::string(row.unit) + row.below;
    MakeKey(RootNamed(row.root), path);
    CUndoRecord undo(undoFile);
    const RepairTarget target{RootNamed(row.root), row.root, path, undo};
    const KindRepair repair = kAllRepairs[index];
    const bool isOfKind = std::ranges::find(row.kinds, repair) != row.kinds.end();
    // A product's key stays as long as it has a subkey.
    const bool goes = isOfKind && repair != RepairUninstallKey;
    CHECK(repair(target) == goes);
    CHECK(unit.Exists() != goes);
    CHECK(KeyExists(RootNamed(row.root), path) != goes);
    CHECK(Exists(undoFile) == isOfKind);
    CHECK(unit.SurroundingsAreWhole());
}

constexpr char kMachine[] = "HKEY_LOCAL_MACHINE";
constexpr char kUser[] = "HKEY_CURRENT_USER";
constexpr char kClasses[] = "HKEY_CLASSES_ROOT";

bool IsList(std::span<const RepairKind> list, std::initializer_list<KindRepair> wanted) {
    return std::ranges::equal(list, wanted, {}, &RepairKind::repair);
}

}  // namespace

TEST_CASE("each repair takes the entries of its own kind and touches no other") {
    const Row rows[] = {
        {kMachine, R"(SOFTWARE\Classes\CLSID\)" GUID, R"(\LocalServer32)", {RepairClsidKey}},
        {kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID, R"(\1.0\HELPDIR)", {RepairTypeLibKey}},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\DefaultIcon)", {RepairDefaultIconClass}},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\shell\open\command)", {RepairShellCommandClass}},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\Shell\open\Command)", {RepairShellCommandClass}},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\Shell\open\command)", {RepairShellCommandClass}},
        {kMachine, R"(SOFTWARE\Classes\gone)", R"(\shell\open)", {}},
        {kMachine,
         R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1\Components\ABC)",
         "",
         {RepairInstallerComponent}},
        {kMachine,
         R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1\Products\ABC)",
         "",
         {}},
        {kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\gone.exe)", "", {RepairAppPath}},
        {kMachine,
         R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application\Gone)",
         "",
         {RepairEventlogSource}},
        {kMachine, R"(SYSTEM\CurrentControlSet\Services\Eventlog\System\Gone)", "", {}},
        {kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\Gone)", "", {RepairUninstallKey}},
        {kUser, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\Gone)", "", {}},
        {kUser,
         R"(Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs\Gone)",
         "",
         {RepairMenuOrderKey, RepairSoftwareKey}},
        {kMachine,
         R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache\Gone)",
         "",
         {RepairArpCacheKey, RepairSoftwareKey}},
        {kMachine, R"(Software\Gone)", "", {RepairSoftwareKey}},
        {kUser, R"(Software\Gone)", "", {RepairSoftwareKey}},
        {kUser, R"(SOFTWARE\Gone)", "", {}},
        {"HKEY_USERS", R"(.Default\Software\Gone)", "", {}},
        {kClasses, R"(CLSID\)" GUID, "", {RepairComFamilyKey}},
        {kClasses, R"(TypeLib\)" GUID, "", {RepairComFamilyKey}},
        {kClasses, R"(Interface\)" GUID, "", {RepairComFamilyKey}},
        {kClasses, R"(Component Categories\)" GUID, "", {}},
        {kUser,
         R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.gone)",
         "",
         {RepairFileExtsKey, RepairSoftwareKey}},
        {kUser,
         R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.gone\OpenWithList)",
         "",
         {RepairFileExtsKey, RepairSoftwareKey}},
        {kUser,
         R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\.gone)",
         "",
         {RepairRecentDocsKey, RepairSoftwareKey}},
    };
    for (const Row& row : rows) {
        CAPTURE(std::string(row.unit));
        for (std::size_t index = 0; index < std::size(kAllRepairs); ++index) CheckRepair(row, index);
    }
}

TEST_CASE("the kinds are tried in a fixed order") {
    CHECK(IsList(ValueEntryRepairs(), {RepairEventlogSource, RepairInstallerComponent, RepairClsidKey,
                                       RepairTypeLibKey, RepairDefaultIconClass, RepairShellCommandClass}));
    CHECK(IsList(ClassesRootKeyRepairs(), {RepairComFamilyKey}));
    CHECK(IsList(CurrentUserKeyRepairs(),
                 {RepairMenuOrderKey, RepairFileExtsKey, RepairRecentDocsKey, RepairSoftwareKey}));
    CHECK(
        IsList(KeyEntryRepairs(), {RepairTypeLibKey, RepairDefaultIconClass, RepairShellCommandClass,
                                   RepairUninstallKey, RepairAppPath, RepairArpCacheKey, RepairSoftwareKey}));
}

TEST_CASE("of an entry of two kinds only the unit of the one that is tried first goes") {
    struct TwoKinds {
        const char* root;
        const char* unit;
        const char* below;
        const char* value;
    };
    constexpr TwoKinds kRows[] = {
        // Not the class below a component, nor the class that a type library's icon seems to belong to.
        {kMachine,
         R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1\Components\Classes\CLSID\)" GUID
         R"(\x)",
         "", R"(\"v")"},
        {kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID, R"(\1.0\DefaultIcon)", R"(\"v")"},
        {kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID, R"(\1.0\DefaultIcon)", ""},
        {kMachine, R"(SOFTWARE\Classes\gone\shell)", R"(\DefaultIcon\command)", ""},
        {kMachine, R"(Software\Classes\gone)", R"(\DefaultIcon)", ""},
        // A user's own class loses the key of the entry alone; a class of the classes root likewise.
        {kUser, R"(Software\Classes\gone\DefaultIcon)", "", ""},
        {kClasses, R"(CLSID\)" GUID R"(\DefaultIcon)", "", ""},
    };
    for (const TwoKinds& row : kRows) {
        CAPTURE(std::string(row.unit));
        const CRepairBench bench;
        const CPlantedUnit unit(row.root, row.unit);
        const std::string path = std::string(row.unit) + row.below;
        MakeKey(RootNamed(row.root), path);
        CHECK(bench.Repair(std::string("\\") + row.root + "\\" + path + row.value));
        CHECK_FALSE(unit.Exists());
        CHECK(unit.SurroundingsAreWhole());
        CHECK(bench.Exports() == std::vector<std::string>{unit.KeyText()});
    }
}
