#pragma once

#include "tests/support/hive_actions.h"
#include "tests/support/planted_hives.h"

/// The folder of backups beside the test program: missing at the start, and removed at the end. One that was
/// there before, of somebody who ran the program there, is back then.
class CBackupsFolder {
public:
    CBackupsFolder();
    CBackupsFolder(const CBackupsFolder&) = delete;
    CBackupsFolder& operator=(const CBackupsFolder&) = delete;
    ~CBackupsFolder();

    [[nodiscard]] static std::string Path();
    /// A folder, or a file with a text, in it.
    static std::string AddFolder(const std::string& name);
    static std::string AddFile(const std::string& name, const std::string& text);
};

/// Planted hives, and actions in force that know their files.
class CHiveBench {
public:
    CHiveBench() { SetSystemActions(&actions); }
    CHiveBench(const CHiveBench&) = delete;
    CHiveBench& operator=(const CHiveBench&) = delete;
    ~CHiveBench() { SetSystemActions(nullptr); }

    /// Plants machine hives of these names, in the order of the list.
    void AddMachines(std::initializer_list<const char*> names);

    CHiveActions actions;
    CPlantedHives hives;
};

/// The names of what is in a folder, sorted.
[[nodiscard]] std::vector<std::string> NamesIn(const std::string& folder);

/// Whether this process has a privilege in force.
[[nodiscard]] bool IsPrivilegeEnabled(const char* privilege);
/// Takes a privilege out of force.
void DisablePrivilege(const char* privilege);
