#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "hives/hive_list_rules.h"
#include "platform/owners.h"
#include "registry/registry_access.h"

/// One hive of the system's list, with the file that it was loaded from.
struct ListedHive {
    std::string name;        // as in "\REGISTRY\MACHINE\SOFTWARE"
    std::string devicePath;  // as in "\Device\HarddiskVolume1\Windows\System32\config\SOFTWARE"
};

/// Walks the hives of the machine and of its users in the system's list. Newer systems list hives there, too,
/// that programs have loaded for themselves ("\REGISTRY\A\..."); nobody else can open those, and they are
/// passed over.
class CHiveList {
public:
    /// @return false when the list cannot be opened.
    [[nodiscard]] bool Open();
    /// The next hive that has a file; nothing behind the last one. An entry that cannot be read, for example
    /// because it is longer than 260 bytes, is passed over.
    [[nodiscard]] std::optional<ListedHive> Next();
    /// Behind the last hive: whether that was the end of the list, and not of our access to it.
    [[nodiscard]] bool IsComplete() const { return m_isComplete; }

private:
    CUniqueKey m_list;
    DWORD m_next = 0;
    CWalkEnd m_end{CWalkEnd::Of::Values};
    bool m_isComplete = false;
};

/// Opens a hive for what a backup privilege allows, whatever its access list says.
[[nodiscard]] LSTATUS OpenHive(const HiveKey& hive, CUniqueKey& key);

/// The same for a hive's name in the list; false when the name leads nowhere or the hive cannot be opened.
[[nodiscard]] bool OpenListedHive(const ListedHive& hive, CUniqueKey& key);

/// Enables the three privileges that replacing hives and restarting the system need.
void EnableReplacePrivileges();
