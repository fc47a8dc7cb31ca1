#pragma once

#include <optional>
#include <string>

/// Turns the device paths of hive files into file paths, on the drive that Windows is installed on.
class CDriveMap {
public:
    CDriveMap();

    /// A hive file's path as programs name it; nothing for a file on another volume.
    [[nodiscard]] std::optional<std::string> FilePath(const std::string& devicePath) const;

private:
    std::string m_drive;   // as in "C:"
    std::string m_device;  // as in "\Device\HarddiskVolume1"; empty: unknown
};
