#include "hives/drive_map.h"

#include <windows.h>

#include "hives/hive_list_rules.h"
#include "platform/host_services.h"

CDriveMap::CDriveMap() {
    char folder[MAX_PATH] = "";
    if (::GetWindowsDirectoryA(folder, sizeof folder) == 0) return;
    m_drive.assign(folder, 2);
    m_device = SystemActions().DeviceOfDrive(m_drive.c_str());
}

std::optional<std::string> CDriveMap::FilePath(const std::string& devicePath) const {
    return DevicePathAsFilePath(devicePath, m_device, m_drive);
}
