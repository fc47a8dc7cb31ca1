#include <doctest/doctest.h>

#include <string>

#include "repair/repair_entry.h"
#include "tests/repair/key_security.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/call_counter.h"
#include "tests/support/native_calls.h"

namespace {

#define GUID "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}"

constexpr const char* kUninstall = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\VellumorGone)";

using Deed = Repair::Deed;

/// Plans a repair, makes it, and checks that both tell the same. @return what was done.
Repair RepairAsPlanned(const std::string& entryText) {
    CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.reg");
    const Repair plan = PlanRepair(entryText);
    const Repair repair = RepairEntry(entryText, undo);
    CHECK((plan.deed == repair.deed));
    CHECK(plan.key == repair.key);
    return repair;
}

}  // namespace

TEST_CASE("a repair tells that it deleted a value, emptied a default value, or did nothing") {
    CScratchKey key(HKEY_CURRENT_USER, "VellumorPlain");
    SetText(key.Get(), "dead", "x");
    const std::string value = key.Path() + R"(\"dead")";
    CHECK((RepairAsPlanned(value).deed == Deed::ValueDeleted));
    CHECK((RepairAsPlanned(value).deed == Deed::Nothing));
    CHECK((RepairAsPlanned(key.Path()).deed == Deed::DefaultEmptied));
    CHECK((RepairAsPlanned(key.Path() + R"(\none\"dead")").deed == Deed::Nothing));
    CHECK((RepairAsPlanned(key.Path() + R"(\none)").deed == Deed::Nothing));
    CHECK((RepairAsPlanned(R"(\HKEY_NOWHERE\x)").deed == Deed::Nothing));
}

TEST_CASE("a repair of every kind tells the key that it removed") {
    struct Row {
        const char* root;
        const char* unit;
        const char* below;
        const char* value;
    };
    constexpr char kUser[] = "HKEY_CURRENT_USER";
    constexpr char kMachine[] = "HKEY_LOCAL_MACHINE";
    const Row rows[] = {
        {kMachine, R"(SOFTWARE\Classes\CLSID\)" GUID, R"(\LocalServer32)", R"(\"v")"},
        {kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID, R"(\1.0)", ""},
        {kMachine, R"(SOFTWARE\Classes\VellumorGone)", R"(\DefaultIcon)", ""},
        {kMachine, R"(SOFTWARE\Classes\VellumorGone)", R"(\shell\open\command)", R"(\"v")"},
        {kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\VellumorGone.exe)", "", ""},
        {kMachine, R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application\VellumorGone)", "", R"(\"v")"},
        {"HKEY_CLASSES_ROOT", R"(CLSID\)" GUID, "", ""},
        {kUser, R"(Software\VellumorGone)", "", ""},
        {kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.vellumorgone)", "", ""},
    };
    for (const Row& row : rows) {
        CAPTURE(std::string(row.unit));
        const CPlantedUnit unit(row.root, row.unit);
        MakeKey(RootNamed(row.root), std::string(row.unit) + row.below);
        const Repair repair = RepairAsPlanned("\\" + unit.KeyText() + row.below + row.value);
        CHECK((repair.deed == Deed::KeyRemoved));
        CHECK(repair.key == "\\" + unit.KeyText());
        CHECK_FALSE(unit.Exists());
    }
}

TEST_CASE("a product's key goes as planned, and stays as planned while it has subkeys") {
    CScratchKey product(HKEY_LOCAL_MACHINE, kUninstall);
    product.Add("sub");
    CHECK((RepairAsPlanned(product.Path()).deed == Deed::DefaultEmptied));
    CHECK(DeleteBelow(product, "sub") == ERROR_SUCCESS);
    CHECK((RepairAsPlanned(product.Path()).deed == Deed::KeyRemoved));
    CHECK_FALSE(KeyExists(HKEY_LOCAL_MACHINE, kUninstall));
}

TEST_CASE("a value whose name another one has in the code page, too, is left as planned, and told so") {
    CScratchKey key(HKEY_CURRENT_USER, "VellumorPlain");
    SetText(key.Get(), "vA", "good");
    REQUIRE(SetTextByCountedName(key.Get(), L"v\xFF21", L"C:\\gone"));
    const std::string entry = key.Path() + R"(\"vA")";
    CHECK((RepairAsPlanned(entry).deed == Deed::Nothing));
    CHECK(PlanRepair(entry).isRefused);
    CHECK_FALSE(PlanRepair(key.Path() + R"(\"none")").isRefused);
}

TEST_CASE("a plan of many entries tells of each the same as a plan of that one") {
    CScratchKey one(HKEY_CURRENT_USER, "VellumorPlain");
    CScratchKey other(HKEY_CURRENT_USER, "VellumorOther");
    for (const CScratchKey* key : {&one, &other}) SetText(key->Get(), "vA", "good");
    SetText(other.Get(), "w", "good");
    REQUIRE(SetTextByCountedName(one.Get(), L"v\xFF21", L"C:\\gone"));
    CRepairPlan plan;
    for (const CScratchKey* key : {&one, &other, &one, &one})
        for (const char* value : {R"(\"vA")", R"(\"va")", R"(\"w")", R"(\"none")"}) {
            CAPTURE(key->Path() + value);
            const Repair planned = plan.Of(key->Path() + value);
            CHECK((planned.deed == PlanRepair(key->Path() + value).deed));
            CHECK(planned.isRefused == PlanRepair(key->Path() + value).isRefused);
        }
    CHECK(plan.Of(one.Path() + R"(\"vA")").isRefused);
    CHECK((plan.Of(other.Path() + R"(\"vA")").deed == Deed::ValueDeleted));
}

TEST_CASE("a plan reads a key's names once for its values that come one after another") {
    CScratchKey key(HKEY_CURRENT_USER, "VellumorPlain");
    constexpr int kValues = 50;
    for (int value = 0; value < kValues; ++value) SetText(key.Get(), "v" + std::to_string(value), "x");
    const CCallCounter counter;
    CRepairPlan plan;
    for (int value = 0; value < kValues; ++value)
        CHECK((plan.Of(key.Path() + R"(\"v)" + std::to_string(value) + "\"").deed == Deed::ValueDeleted));
    CHECK(CCallCounter::CallsTo("RegEnumValueA") <= 2 * kValues);
}

TEST_CASE("a plan changes nothing") {
    const CPlantedUnit unit("HKEY_CURRENT_USER", R"(Software\VellumorGone)");
    CHECK((PlanRepair("\\" + unit.KeyText()).deed == Deed::KeyRemoved));
    CHECK(unit.Exists());
    CHECK(unit.SurroundingsAreWhole());
}
