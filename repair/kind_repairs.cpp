#include "repair/kind_repairs.h"

#include "platform/owners.h"
#include "registry/key_link.h"
#include "repair/key_deletion.h"
#include "repair/repair_access.h"
#include "repair/unit_rules.h"

namespace {

EntryKey KeyOf(const RepairTarget& target) { return {target.rootName, target.subkeyPath}; }

/// Exports a unit and opens its parent.
/// @return whether the parent is open.
bool PrepareRemoval(const RepairTarget& target, const std::string& unit, const std::string& parent,
                    CUniqueKey& parentKey) {
    ExportUnit(target, unit);
    return OpenForced(target.rootKey, parent, kDeletionAccess, parentKey) == ERROR_SUCCESS;
}

bool RemoveTree(const RepairTarget& target, const Unit& unit) {
    if (!unit.has_value()) return false;
    const ParentAndName place = SplitLastKey(*unit);
    CUniqueKey parent;
    if (!PrepareRemoval(target, *unit, place.parent, parent)) return false;
    return DeleteKeyRecursive({parent.Get(), target.rootKey, place.parent}, place.name) == ERROR_SUCCESS;
}

bool RemoveSingleKey(const RepairTarget& target, const Unit& unit) {
    if (!unit.has_value()) return false;
    const ParentAndName place = SplitLastKey(*unit);
    CUniqueKey parent;
    if (!PrepareRemoval(target, *unit, place.parent, parent)) return false;
    return DeleteKeyItself(parent.Get(), place.name.c_str()) == ERROR_SUCCESS;
}

}  // namespace

bool RepairClsidKey(const RepairTarget& target) { return RemoveTree(target, ClsidUnit(KeyOf(target))); }

bool RepairTypeLibKey(const RepairTarget& target) { return RemoveTree(target, TypeLibUnit(KeyOf(target))); }

bool RepairDefaultIconClass(const RepairTarget& target) {
    return RemoveTree(target, DefaultIconClassUnit(KeyOf(target)));
}

bool RepairShellCommandClass(const RepairTarget& target) {
    return RemoveTree(target, ShellCommandClassUnit(KeyOf(target)));
}

bool RepairInstallerComponent(const RepairTarget& target) {
    return RemoveTree(target, InstallerComponentUnit(KeyOf(target)));
}

bool RepairAppPath(const RepairTarget& target) { return RemoveTree(target, AppPathUnit(KeyOf(target))); }

bool RepairEventlogSource(const RepairTarget& target) {
    return RemoveTree(target, EventlogSourceUnit(KeyOf(target)));
}

bool RepairUninstallKey(const RepairTarget& target) {
    return RemoveSingleKey(target, UninstallUnit(KeyOf(target)));
}

bool RepairMenuOrderKey(const RepairTarget& target) {
    return RemoveTree(target, MenuOrderUnit(KeyOf(target)));
}

bool RepairArpCacheKey(const RepairTarget& target) { return RemoveTree(target, ArpCacheUnit(KeyOf(target))); }

bool RepairSoftwareKey(const RepairTarget& target) { return RemoveTree(target, SoftwareUnit(KeyOf(target))); }

bool RepairComFamilyKey(const RepairTarget& target) {
    return RemoveTree(target, ComFamilyUnit(KeyOf(target)));
}

bool RepairFileExtsKey(const RepairTarget& target) { return RemoveTree(target, FileExtsUnit(KeyOf(target))); }

bool RepairRecentDocsKey(const RepairTarget& target) {
    return RemoveTree(target, RecentDocsUnit(KeyOf(target)));
}

std::span<const KindRepair> ValueEntryRepairs() {
    static constexpr KindRepair kRepairs[] = {RepairEventlogSource,   RepairInstallerComponent,
                                              RepairClsidKey,         RepairTypeLibKey,
                                              RepairDefaultIconClass, RepairShellCommandClass};
    return kRepairs;
}

std::span<const KindRepair> ClassesRootKeyRepairs() {
    static constexpr KindRepair kRepairs[] = {RepairComFamilyKey};
    return kRepairs;
}

std::span<const KindRepair> CurrentUserKeyRepairs() {
    static constexpr KindRepair kRepairs[] = {RepairMenuOrderKey, RepairFileExtsKey, RepairRecentDocsKey,
                                              RepairSoftwareKey};
    return kRepairs;
}

std::span<const KindRepair> KeyEntryRepairs() {
    static constexpr KindRepair kRepairs[] = {
        RepairTypeLibKey, RepairDefaultIconClass, RepairShellCommandClass, RepairUninstallKey,
        RepairAppPath,    RepairArpCacheKey,      RepairSoftwareKey};
    return kRepairs;
}
