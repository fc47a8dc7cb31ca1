#pragma once

#include <optional>
#include <string>
#include <string_view>

enum class HiveRoot { LocalMachine, Users };

/// A loaded hive as it is opened: HKEY_LOCAL_MACHINE or HKEY_USERS, and the subkey that the hive is.
struct HiveKey {
    HiveRoot root;
    std::string subkey;

    bool operator==(const HiveKey&) const = default;
};

/// Takes a name from the system's hive list apart; like every registry path it may come in any letter case.
/// @param name  as in "\REGISTRY\MACHINE\SOFTWARE" or "\REGISTRY\USER\S-1-5-19".
/// @return nothing for a name that leads to neither root, or to the root itself.
[[nodiscard]] std::optional<HiveKey> ParseHiveName(std::string_view name);

/// The name of the file that a hive is backed up to, as in "MACHINE.SOFTWARE.bck".
/// @return nothing for a subkey whose name would lead into another folder.
[[nodiscard]] std::optional<std::string> BackupFileName(const HiveKey& hive);

/// The hive that a backup file holds.
/// @return nothing for a name that BackupFileName does not give.
[[nodiscard]] std::optional<HiveKey> HiveOfBackupFile(std::string_view fileName);

/// A backup file's name with another ending in place of ".bck".
/// @param fileName  one that HiveOfBackupFile understands.
[[nodiscard]] std::string WithEnding(std::string_view fileName, std::string_view ending);

/// Turns a hive file's device path into a file path.
/// @param devicePath  as in "\Device\HarddiskVolume1\Windows\System32\config\SAM".
/// @param device      the drive's device name, as in "\Device\HarddiskVolume1".
/// @param drive       as in "C:".
/// @return as in "C:\Windows\System32\config\SAM"; nothing for a path on another device.
[[nodiscard]] std::optional<std::string> DevicePathAsFilePath(std::string_view devicePath,
                                                              std::string_view device,
                                                              std::string_view drive);
