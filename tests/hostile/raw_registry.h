#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/owners.h"

// Keys and values by names of counted characters, in which zeros may stand, and by the system's own calls. Of
// symbolic links it is always the link that is meant.

struct RawValue {
    std::wstring name;
    DWORD type;
    std::string data;
    bool operator==(const RawValue&) const = default;
};

/// Opens a subkey. @return empty where that is refused.
[[nodiscard]] CUniqueKey OpenRaw(HKEY parent, const std::wstring& name, REGSAM access);

/// Creates a subkey, or opens the one that is there.
[[nodiscard]] CUniqueKey CreateRaw(HKEY parent, const std::wstring& name);

/// Creates a symbolic link. @param target  an object name, as in L"\\Registry\\Machine\\Software".
[[nodiscard]] CUniqueKey CreateRawLink(HKEY parent, const std::wstring& name, const std::wstring& target);

bool SetRaw(HKEY key, const RawValue& value);
bool DeleteRawValue(HKEY key, const std::wstring& name);
/// Deletes a key with all below it.
void DeleteRawTree(HKEY key);

[[nodiscard]] std::vector<std::wstring> RawSubkeys(HKEY key);
[[nodiscard]] std::vector<RawValue> RawValues(HKEY key);

/// The narrow text as the system would read it, and a counted name as it comes out of a narrow call.
[[nodiscard]] std::wstring Widen(const std::string& text);
[[nodiscard]] std::string Narrow(const std::wstring& name);

/// The name in small letters, as the system compares names.
[[nodiscard]] std::wstring Folded(std::wstring name);
