#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/driver/remote_list.h"

/// A value with its content, and a key with all that lies below it, kept outside the registry.
struct SavedValue {
    std::wstring name;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};
struct SavedKey {
    std::wstring name;
    std::vector<SavedValue> values;
    std::vector<SavedKey> subkeys;
};

/// Takes entries out of the registry for as long as it lives, and then puts them back, the last one first.
class CTakenEntries {
public:
    CTakenEntries() = default;
    CTakenEntries(const CTakenEntries&) = delete;
    CTakenEntries& operator=(const CTakenEntries&) = delete;
    ~CTakenEntries();

    /// Leaves HKEY_CLASSES_ROOT empty. Its entries refer to one another, so that taking the reported ones
    /// alone would make others dead.
    void TakeAllClasses();
    /// Takes the value that a row shows, or, of a row that shows a key alone, the key. What has been taken
    /// already, through another row or another path, is passed over.
    void TakeEntryOf(const ListRow& row);

private:
    struct Taken {
        HKEY root;
        std::string key;
        SavedKey content;
    };

    void TakeValue(HKEY root, const std::string& key, const std::string& valueName);
    void TakeKey(HKEY root, const std::string& key);

    std::vector<Taken> m_taken;
};
