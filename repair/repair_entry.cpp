#include "repair/repair_entry.h"

#include <algorithm>
#include <optional>

#include "platform/owners.h"
#include "registry/key_path.h"
#include "registry/registry_access.h"
#include "repair/entry_rules.h"
#include "repair/kind_repairs.h"
#include "repair/repair_access.h"

namespace {

bool AnyRepairs(std::span<const KindRepair> repairs, const RepairTarget& target) {
    return std::ranges::any_of(repairs, [&](KindRepair repair) { return repair(target); });
}

/// Opens an entry's key for a repair of its values, and exports it.
bool PrepareChange(const RepairTarget& target, CUniqueKey& key) {
    if (OpenForced(target.rootKey, target.subkeyPath, kAllAccess, key) != ERROR_SUCCESS) return false;
    ExportBranch(target, target.subkeyPath);
    return true;
}

bool DeleteValue(const RepairTarget& target, const std::string& valueName) {
    CUniqueKey key;
    return PrepareChange(target, key) && ::RegDeleteValueA(key.Get(), valueName.c_str()) == ERROR_SUCCESS;
}

bool EmptyDefaultValue(const RepairTarget& target) {
    CUniqueKey key;
    if (!PrepareChange(target, key)) return false;
    target.undo.RememberDefault(key.Get(), KeyTextOf(target, target.subkeyPath));
    return ::RegSetValueExA(key.Get(), nullptr, 0, REG_SZ, nullptr, 0) == ERROR_SUCCESS;
}

bool RepairKeyEntry(const RepairTarget& target) {
    if (target.rootKey == HKEY_CLASSES_ROOT && AnyRepairs(ClassesRootKeyRepairs(), target)) return true;
    if (target.rootKey == HKEY_CURRENT_USER && AnyRepairs(CurrentUserKeyRepairs(), target)) return true;
    return AnyRepairs(KeyEntryRepairs(), target) || EmptyDefaultValue(target);
}

}  // namespace

bool RepairEntry(const std::string& entryText, CUndoRecord& undo) {
    const std::optional<Entry> entry = ParseEntry(entryText);
    if (!entry.has_value()) return false;
    const RepairTarget target{RootHandle(entry->root), entry->rootName, entry->subkeyPath, undo};
    if (!entry->valueName.has_value()) return RepairKeyEntry(target);
    return AnyRepairs(ValueEntryRepairs(), target) || DeleteValue(target, *entry->valueName);
}
