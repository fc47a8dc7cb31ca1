#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/host_services.h"

/// Does with hives what Windows documents, as far as Wine only pretends to or a test must not let it through:
/// Wine overwrites a file that a hive is saved to, moves no file of a replaced hive, and on a restart ends
/// every program of the prefix, this one included. Saving itself is Wine's.
class CHiveActions : public CSystemActions {
public:
    LSTATUS SaveHive(HKEY hive, const char* file) override;
    LSTATUS ReplaceHive(HKEY hive, const char* newFile, const char* oldFile) override;
    std::string DeviceOfDrive(const char* drive) override;
    bool RestartSystem() override;

    /// The file of each hive, by the hive's name in the list in small letters.
    std::map<std::string, std::string> hiveFiles;

    std::function<void()> beforeSave;         // runs first at each save
    std::function<void()> beforeReplacement;  // and at each replacement
    std::optional<std::string> device;        // instead of the system's answer

    /// From 1: which call is refused, and the answer; 0: none.
    std::size_t refusedSave = 0;
    LSTATUS saveAnswer = ERROR_DISK_FULL;
    std::size_t refusedReplacement = 0;
    LSTATUS replaceAnswer = ERROR_ACCESS_DENIED;

    /// What was asked for, the refused ones included.
    struct Replacement {
        std::string hive;
        std::string newFile;
        std::string oldFile;

        bool operator==(const Replacement&) const = default;
    };
    std::vector<std::string> saves;
    std::vector<Replacement> replacements;
    int restarts = 0;
};
