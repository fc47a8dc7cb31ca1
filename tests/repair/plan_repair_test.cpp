#include <doctest/doctest.h>

#include <string>

#include "repair/repair_entry.h"
#include "tests/repair/key_security.h"
#include "tests/repair/repair_bench.h"

namespace {

constexpr const char* kUninstall = R"(Software\Microsoft\Windows\CurrentVersion\Uninstall\VellumorGone)";

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
    CScratchKey key(HKEY_LOCAL_MACHINE, "");
    SetText(key.Get(), "dead", "x");
    const std::string value = key.Path() + R"(\"dead")";
    CHECK((RepairAsPlanned(value).deed == Deed::ValueDeleted));
    CHECK((RepairAsPlanned(value).deed == Deed::Nothing));
    CHECK((RepairAsPlanned(key.Path() + R"(\none\"dead")").deed == Deed::Nothing));
    CHECK((RepairAsPlanned(R"(\HKEY_NOWHERE\x)").deed == Deed::Nothing));
}
