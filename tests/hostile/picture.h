#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/hostile/raw_registry.h"

/// A key as it was: its values, by their names in small letters.
struct KeyPicture {
    bool isReadable = true;
    std::map<std::wstring, RawValue> values;
    std::vector<std::wstring> order;  // names of the values, as the system enumerates them
    bool operator==(const KeyPicture&) const = default;
};

/// Keys by their object names in small letters.
using Picture = std::map<std::wstring, KeyPicture>;

/// Takes a picture of all that lies below HKEY_LOCAL_MACHINE and HKEY_USERS, without what the platform and
/// the registry editor keep of their own windows.
[[nodiscard]] Picture TakeRegistryPicture();

/// Something that is not as it was.
struct Change {
    enum class Kind { KeyGone, KeyNew, ValueGone, ValueChanged, ValueNew, RightsChanged };
    Kind kind;
    std::wstring key;    // object name in small letters
    std::wstring value;  // name in small letters
    RawValue after{};    // of a new or changed value
};

/// What changed from one picture to another. Of a branch that is gone, only its topmost key is told.
[[nodiscard]] std::vector<Change> Changes(const Picture& before, const Picture& after);

/// The change in words.
[[nodiscard]] std::string Describe(const Change& change);
