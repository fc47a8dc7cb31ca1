#pragma once

#include <windows.h>

#include <commctrl.h>

#include "platform/unique.h"

struct KeyTraits {
    using Type = HKEY;
    static constexpr Type None() { return nullptr; }
    static void Close(Type key) {
        if (!IsPredefined(key)) ::RegCloseKey(key);
    }
    /// Opening a root without a subkey can give the root itself, which is never closed.
    static bool IsPredefined(Type key) {
        constexpr LONG_PTR kFirst = static_cast<LONG>(0x80000000);
        const auto value = reinterpret_cast<LONG_PTR>(key);
        return value >= kFirst && value < kFirst + 0x100;
    }
};
using CUniqueKey = CUnique<KeyTraits>;

/// Events, threads and processes: kernel handles whose "none" is null.
struct HandleTraits {
    using Type = HANDLE;
    static constexpr Type None() { return nullptr; }
    static void Close(Type handle) { ::CloseHandle(handle); }
};
using CUniqueHandle = CUnique<HandleTraits>;

/// Files and snapshots: kernel handles whose "none" is INVALID_HANDLE_VALUE.
struct FileTraits {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { ::CloseHandle(handle); }
};
using CUniqueFile = CUnique<FileTraits>;

struct FindTraits {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { ::FindClose(handle); }
};
using CUniqueFind = CUnique<FindTraits>;

struct MenuTraits {
    using Type = HMENU;
    static constexpr Type None() { return nullptr; }
    static void Close(Type menu) { ::DestroyMenu(menu); }
};
using CUniqueMenu = CUnique<MenuTraits>;

struct ImageListTraits {
    using Type = HIMAGELIST;
    static constexpr Type None() { return nullptr; }
    static void Close(Type images) { ::ImageList_Destroy(images); }
};
using CUniqueImageList = CUnique<ImageListTraits>;

struct BitmapTraits {
    using Type = HBITMAP;
    static constexpr Type None() { return nullptr; }
    static void Close(Type bitmap) { ::DeleteObject(bitmap); }
};
using CUniqueBitmap = CUnique<BitmapTraits>;

struct FontTraits {
    using Type = HFONT;
    static constexpr Type None() { return nullptr; }
    static void Close(Type font) { ::DeleteObject(font); }
};
using CUniqueFont = CUnique<FontTraits>;
