#include "repair/kind_repairs.h"

#include "platform/owners.h"
#include "registry/key_link.h"
#include "registry/value_reader.h"
#include "repair/key_deletion.h"
#include "repair/repair_access.h"
#include "repair/unit_rules.h"

namespace {

EntryKey KeyOf(const RepairTarget& target) { return {target.rootName, target.subkeyPath}; }

/// Exports a unit and opens its parent.
/// @return whether the unit may be removed, and its parent is open.
bool PrepareRemoval(const RepairTarget& target, const std::string& unit, const std::string& parent,
                    CUniqueKey& parentKey) {
    return ExportUnit(target, unit) &&
           OpenForced(target.rootKey, parent, kDeletionAccess, parentKey) == ERROR_SUCCESS;
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

std::span<const RepairKind> ValueEntryRepairs() {
    static constexpr RepairKind kKinds[] = {
        {RepairEventlogSource, EventlogSourceUnit},
        {RepairInstallerComponent, InstallerComponentUnit},
        {RepairClsidKey, ClsidUnit},
        {RepairTypeLibKey, TypeLibUnit},
        {RepairDefaultIconClass, DefaultIconClassUnit},
        {RepairShellCommandClass, ShellCommandClassUnit},
    };
    return kKinds;
}

std::span<const RepairKind> ClassesRootKeyRepairs() {
    static constexpr RepairKind kKinds[] = {{RepairComFamilyKey, ComFamilyUnit}};
    return kKinds;
}

std::span<const RepairKind> CurrentUserKeyRepairs() {
    static constexpr RepairKind kKinds[] = {
        {RepairMenuOrderKey, MenuOrderUnit},
        {RepairFileExtsKey, FileExtsUnit},
        {RepairRecentDocsKey, RecentDocsUnit},
        {RepairSoftwareKey, SoftwareUnit},
    };
    return kKinds;
}

std::span<const RepairKind> KeyEntryRepairs() {
    static constexpr RepairKind kKinds[] = {
        {RepairTypeLibKey, TypeLibUnit},
        {RepairDefaultIconClass, DefaultIconClassUnit},
        {RepairShellCommandClass, ShellCommandClassUnit},
        {RepairUninstallKey, UninstallUnit},
        {RepairAppPath, AppPathUnit},
        {RepairArpCacheKey, ArpCacheUnit},
        {RepairSoftwareKey, SoftwareUnit},
    };
    return kKinds;
}

Unit UnitToRemove(const RepairKind& kind, const RepairTarget& target) {
    const Unit unit = kind.unit(KeyOf(target));
    if (!unit.has_value()) return std::nullopt;
    CUniqueKey key;
    const LSTATUS opened = OpenKeyItself(target.rootKey, unit->c_str(), KEY_READ, key);
    if (opened == ERROR_ACCESS_DENIED) return unit;  // it would be taken over
    if (opened != ERROR_SUCCESS) return std::nullopt;
    const bool stays = kind.repair == RepairUninstallKey && !HasNoSubkeys(key.Get());
    return stays ? std::nullopt : unit;
}
