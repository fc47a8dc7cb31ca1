#pragma once

#include <list>
#include <map>
#include <string>

#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

/// A hive list of the test's own, with keys and files for its hives. The system's list must be empty, as it
/// is in a Wine prefix; at the end it is so again. The list is walked in the order of the names.
class CPlantedHives {
public:
    CPlantedHives();
    CPlantedHives(const CPlantedHives&) = delete;
    CPlantedHives& operator=(const CPlantedHives&) = delete;
    ~CPlantedHives();

    /// Lists a hive HKEY_LOCAL_MACHINE\name or HKEY_USERS\name, which is made, with a file that holds
    /// "old <name>". @return the file's path.
    std::string AddMachine(const std::string& name);
    std::string AddUser(const std::string& name);
    /// Lists a name alone. @param devicePath  empty: a hive without a file.
    void AddEntry(const std::string& name, const std::string& devicePath);
    /// Lists a hive that has no key; its file's path is as good as any.
    void AddMissing(const std::string& name) { AddEntry("\\REGISTRY\\MACHINE\\" + name, DevicePath(name)); }
    /// Lists exactly these bytes.
    void AddBytes(const std::string& name, DWORD type, const std::string& bytes);

    /// Takes an entry off the list.
    void RemoveEntry(const std::string& name);

    /// The hive's own key.
    [[nodiscard]] HKEY Key(const std::string& name) { return m_keys.at(name).Get(); }
    void Restrict(const std::string& name, REGSAM rights) { m_keys.at(name).Restrict(Key(name), rights); }
    /// Takes the whole list away, until the end.
    void RemoveList();

    /// The folder of the hive files, and a file in it, as the system and as the hive list name it.
    [[nodiscard]] const std::string& Folder() const { return m_folder.Path(); }
    [[nodiscard]] std::string FilePath(const std::string& name) const { return Folder() + "\\" + name; }
    [[nodiscard]] std::string DevicePath(const std::string& name) const;

    /// The file of each planted hive, by its name in the list in small letters.
    [[nodiscard]] const std::map<std::string, std::string>& Files() const { return m_files; }

private:
    std::string Add(HKEY root, const char* listRoot, const std::string& name);
    void OpenList();
    void EmptyList();

    CUniqueKey m_list;
    CScratchFolder m_folder;
    std::map<std::string, CScratchKey> m_keys;
    std::map<std::string, std::string> m_files;
};

/// Writes a file anew.
void WriteFileText(const std::string& path, const std::string& text);
