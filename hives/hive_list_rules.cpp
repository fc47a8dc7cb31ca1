#include "hives/hive_list_rules.h"

#include <algorithm>

#include "registry/letter_case_rules.h"

namespace {

struct RootRow {
    HiveRoot root;
    std::string_view registryPath;
    std::string_view filePrefix;
};
constexpr RootRow kRoots[] = {
    {HiveRoot::LocalMachine, R"(\REGISTRY\MACHINE\)", "MACHINE."},
    {HiveRoot::Users, R"(\REGISTRY\USER\)", "USER."},
};
constexpr std::string_view kEnding = ".bck";

bool AreAlike(std::string_view text, std::string_view other) {
    return std::ranges::equal(text, other, {}, LowerCase, LowerCase);
}

bool Begins(std::string_view text, std::string_view beginning) {
    return AreAlike(text.substr(0, beginning.size()), beginning);
}

bool Ends(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && AreAlike(text.substr(text.size() - ending.size()), ending);
}

std::optional<HiveKey> KeyBelow(std::string_view text, std::string_view RootRow::*beginning) {
    for (const RootRow& row : kRoots) {
        const std::string_view expected = row.*beginning;
        if (Begins(text, expected) && text.size() > expected.size())
            return HiveKey{row.root, std::string(text.substr(expected.size()))};
    }
    return std::nullopt;
}

}  // namespace

std::optional<HiveKey> ParseHiveName(std::string_view name) { return KeyBelow(name, &RootRow::registryPath); }

std::optional<std::string> BackupFileName(const HiveKey& hive) {
    // Such a name would be saved wherever it says, for "x\..\.." leads out of the backup folder.
    if (hive.subkey.find_first_of("\\/") != std::string::npos) return std::nullopt;
    for (const RootRow& row : kRoots)
        if (row.root == hive.root) return std::string(row.filePrefix).append(hive.subkey).append(kEnding);
    return std::nullopt;
}

std::optional<HiveKey> HiveOfBackupFile(std::string_view fileName) {
    if (!Ends(fileName, kEnding)) return std::nullopt;
    return KeyBelow(fileName.substr(0, fileName.size() - kEnding.size()), &RootRow::filePrefix);
}

std::string WithEnding(std::string_view fileName, std::string_view ending) {
    return std::string(fileName.substr(0, fileName.size() - kEnding.size())).append(ending);
}

std::optional<std::string> DevicePathAsFilePath(std::string_view devicePath, std::string_view device,
                                                std::string_view drive) {
    // Followed by a backslash, for volume 1's name is also the beginning of volume 10's.
    if (device.empty() || !Begins(devicePath, device) || !devicePath.substr(device.size()).starts_with('\\'))
        return std::nullopt;
    return std::string(drive).append(devicePath.substr(device.size()));
}
