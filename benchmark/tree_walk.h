#pragma once

#include <windows.h>

#include "platform/owners.h"
#include "registry/registry_access.h"

/// Walks a tree by the enumeration calls of the deep scan.
/// @param onKey    called for each key, before its values.
/// @param onValue  called before each enumeration of a value, the one behind the last included.
template <class OnKey, class OnValue>
void WalkTree(HKEY key, OnKey onKey, OnValue onValue) {
    onKey();
    ValueBuffers value;
    for (DWORD index = 0;; ++index) {
        onValue();
        if (EndsWalk(EnumValue(key, index, value))) break;
    }
    char name[kNameBytes + 1];
    for (DWORD index = 0;; ++index) {
        const LSTATUS result = EnumSubkey(key, index, name);
        if (EndsWalk(result)) return;
        CUniqueKey child;
        if (result == ERROR_SUCCESS && OpenKey(key, name, kReadAccess, child) == ERROR_SUCCESS)
            WalkTree(child.Get(), onKey, onValue);
    }
}
