#include "repair/repair_entry.h"

#include <cstring>
#include <optional>
#include <set>
#include <span>

#include "platform/owners.h"
#include "registry/key_path.h"
#include "registry/registry_access.h"
#include "registry/value_reader.h"
#include "repair/entry_rules.h"
#include "repair/kind_repairs.h"
#include "repair/repair_access.h"

namespace {

using Deed = Repair::Deed;

Repair KeyRemoved(const RepairTarget& target, const std::string& unit) {
    return {Deed::KeyRemoved, "\\" + KeyTextOf(target, unit)};
}

/// Repairs an entry by one kind.
Repair MakeRepair(const RepairKind& kind, const RepairTarget& target) {
    if (!kind.repair(target)) return {};
    return KeyRemoved(target, kind.unit({target.rootName, target.subkeyPath}).value_or(""));
}

/// Tells what that would do.
Repair FindRepair(const RepairKind& kind, const RepairTarget& target) {
    const Unit unit = UnitToRemove(kind, target);
    return unit.has_value() ? KeyRemoved(target, *unit) : Repair{};
}

using TryKind = Repair (*)(const RepairKind& kind, const RepairTarget& target);

/// @param kept  receives the units that could not be removed. Another kind with the same unit is passed over:
///              it would be held up as long, for the same end.
Repair TryKinds(std::span<const RepairKind> kinds, const RepairTarget& target, TryKind tryKind,
                std::set<std::string>& kept) {
    for (const RepairKind& kind : kinds) {
        const Unit unit = kind.unit({target.rootName, target.subkeyPath});
        if (target.lacksCopy || !unit.has_value() || kept.contains(*unit)) continue;
        if (Repair repair = tryKind(kind, target); repair) return repair;
        kept.insert(*unit);
    }
    return {};
}

/// Tries the kinds that an entry of its root and form can be of, in their order.
Repair TryKindsOf(const Entry& entry, const RepairTarget& target, TryKind tryKind) {
    std::set<std::string> kept;
    if (entry.valueName.has_value()) return TryKinds(ValueEntryRepairs(), target, tryKind, kept);
    Repair repair;
    if (target.rootKey == HKEY_CLASSES_ROOT)
        repair = TryKinds(ClassesRootKeyRepairs(), target, tryKind, kept);
    if (target.rootKey == HKEY_CURRENT_USER)
        repair = TryKinds(CurrentUserKeyRepairs(), target, tryKind, kept);
    return repair ? repair : TryKinds(KeyEntryRepairs(), target, tryKind, kept);
}

/// Opens an entry's key for a repair of its values, and exports it.
bool PrepareChange(const RepairTarget& target, CUniqueKey& key) {
    if (OpenForced(target.rootKey, target.subkeyPath, kAllAccess, key) != ERROR_SUCCESS) return false;
    return ExportBranch(target, target.subkeyPath);
}

/// Calls a function with the name of each of a key's values. @return whether these were all.
template <class Visit>
bool ForEachValueName(HKEY key, Visit visit) {
    CValueReader values(kNameBytes, 0);
    CWalkEnd end(CWalkEnd::Of::Values);
    for (DWORD index = 0;; ++index) {
        const LSTATUS result = values.Read(key, index);
        if (end.IsReached(key, index, result)) return !end.HasGivenUp();
        if (result == ERROR_SUCCESS) visit(values.Name());
    }
}

/// Whether two values of a key have the name. The narrow calls take characters that the code page lacks for
/// similar ones, so an entry can be about a value whose name leads to another one.
bool NameIsAmbiguous(HKEY key, const std::string& valueName) {
    const std::string wanted = InSmallLetters(valueName);
    int count = 0;
    const bool isRead = ForEachValueName(key, [&wanted, &count](const char* name) {
        // Letters keep their length; only the few names that are as long are taken to small ones.
        if (std::strlen(name) == wanted.size() && InSmallLetters(name) == wanted) ++count;
    });
    return count > 1 || !isRead;
}

bool DeleteValue(const RepairTarget& target, const std::string& valueName) {
    CUniqueKey key;
    return PrepareChange(target, key) && !NameIsAmbiguous(key.Get(), valueName) &&
           ::RegDeleteValueA(key.Get(), valueName.c_str()) == ERROR_SUCCESS;
}

bool EmptyDefaultValue(const RepairTarget& target) {
    CUniqueKey key;
    if (!PrepareChange(target, key)) return false;
    if (!target.undo.RememberDefault(key.Get(), KeyTextOf(target, target.subkeyPath))) return false;
    return ::RegSetValueExA(key.Get(), nullptr, 0, REG_SZ, nullptr, 0) == ERROR_SUCCESS;
}

}  // namespace

Repair RepairEntry(const std::string& entryText, CUndoRecord& undo) {
    const std::optional<Entry> entry = ParseEntry(entryText);
    if (!entry.has_value()) return {};
    const RepairTarget target{RootHandle(entry->root), entry->rootName, entry->subkeyPath, undo};
    if (Repair repair = TryKindsOf(*entry, target, &MakeRepair); repair || target.lacksCopy) return repair;
    if (entry->valueName.has_value())
        return {DeleteValue(target, *entry->valueName) ? Deed::ValueDeleted : Deed::Nothing, ""};
    return {EmptyDefaultValue(target) ? Deed::DefaultEmptied : Deed::Nothing, ""};
}

Repair CRepairPlan::Of(const std::string& entryText) {
    const std::optional<Entry> entry = ParseEntry(entryText);
    if (!entry.has_value()) return {};
    CUndoRecord nowhere("");
    const RepairTarget target{RootHandle(entry->root), entry->rootName, entry->subkeyPath, nowhere};
    if (Repair repair = TryKindsOf(*entry, target, &FindRepair); repair) return repair;
    CUniqueKey key;
    const LSTATUS opened = OpenKey(target.rootKey, target.subkeyPath.c_str(), kReadAccess, key);
    if (opened != ERROR_SUCCESS && opened != ERROR_ACCESS_DENIED) return {};
    if (!entry->valueName.has_value()) return {Deed::DefaultEmptied, ""};
    if (!key) return {Deed::ValueDeleted, ""};
    if (::RegQueryValueExA(key.Get(), entry->valueName->c_str(), nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
        return {};
    if (NameIsAmbiguous(key.Get(), KeyTextOf(target, target.subkeyPath), *entry->valueName))
        return {Deed::Nothing, "", true};
    return {Deed::ValueDeleted, ""};
}

bool CRepairPlan::NameIsAmbiguous(HKEY key, const std::string& keyText, const std::string& valueName) {
    if (keyText != m_keyText) {
        m_keyText = keyText;
        m_names.clear();
        m_isRead = ForEachValueName(key, [this](const char* name) { ++m_names[InSmallLetters(name)]; });
    }
    const auto named = m_names.find(InSmallLetters(valueName));
    return (named != m_names.end() && named->second > 1) || !m_isRead;
}
