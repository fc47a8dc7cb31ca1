#pragma once

#include <windows.h>

#include <span>

/// A list of subkeys that a check goes through, and where it looks in each of them.
struct SubkeyList {
    HKEY root;
    const wchar_t* area;
    const wchar_t* inner;      // key below each subkey; "": the subkey itself
    const wchar_t* valueName;  // "": the default value
};
[[nodiscard]] std::span<const SubkeyList> SubkeyLists();

/// A list of values that a check goes through.
struct ValueList {
    HKEY root;
    const wchar_t* area;
};
[[nodiscard]] std::span<const ValueList> ValueLists();
