#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "repair/undo_record.h"
#include "repair/unit_rules.h"

/// What a kind repair works on: one entry and the undo record of its command.
struct RepairTarget {
    HKEY rootKey;            // predefined
    std::string rootName;    // as it stands in the entry
    std::string subkeyPath;  // of the entry's key, below the root
    CUndoRecord& undo;
    /// Set when the unit of a kind could not be copied and must be: then no other repair may take its place.
    mutable bool lacksCopy = false;
};

/// Removes what has to go with an entry of one kind, after exporting it into the undo file.
/// @return whether the entry is of the kind and its unit is gone; with false the next kind may try.
using KindRepair = bool (*)(const RepairTarget& target);

[[nodiscard]] bool RepairClsidKey(const RepairTarget& target);
[[nodiscard]] bool RepairTypeLibKey(const RepairTarget& target);
[[nodiscard]] bool RepairDefaultIconClass(const RepairTarget& target);
[[nodiscard]] bool RepairShellCommandClass(const RepairTarget& target);
[[nodiscard]] bool RepairInstallerComponent(const RepairTarget& target);
[[nodiscard]] bool RepairAppPath(const RepairTarget& target);
[[nodiscard]] bool RepairEventlogSource(const RepairTarget& target);
/// A product's key that still has subkeys stays: whatever keeps data there is not a dead entry.
[[nodiscard]] bool RepairUninstallKey(const RepairTarget& target);
[[nodiscard]] bool RepairMenuOrderKey(const RepairTarget& target);
[[nodiscard]] bool RepairArpCacheKey(const RepairTarget& target);
[[nodiscard]] bool RepairSoftwareKey(const RepairTarget& target);
[[nodiscard]] bool RepairComFamilyKey(const RepairTarget& target);
[[nodiscard]] bool RepairFileExtsKey(const RepairTarget& target);
[[nodiscard]] bool RepairRecentDocsKey(const RepairTarget& target);

/// A kind of entry: how it is repaired, and which key its repair removes.
struct RepairKind {
    KindRepair repair;
    Unit (*unit)(const EntryKey& key);
};

// The kinds that are tried for an entry, in this order, until one succeeds.
[[nodiscard]] std::span<const RepairKind> ValueEntryRepairs();
[[nodiscard]] std::span<const RepairKind> ClassesRootKeyRepairs();
[[nodiscard]] std::span<const RepairKind> CurrentUserKeyRepairs();
[[nodiscard]] std::span<const RepairKind> KeyEntryRepairs();

/// The key that a kind's repair would remove, as things stand: nothing where the entry is not of the kind,
/// where the key is not there, or where it would stay.
[[nodiscard]] Unit UnitToRemove(const RepairKind& kind, const RepairTarget& target);
