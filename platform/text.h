#pragma once

#include <windows.h>

#include <string>

/// A string resource's text; empty where there is none of that id.
[[nodiscard]] inline std::string LoadText(UINT id) {
    char text[512];
    const int length = ::LoadStringA(::GetModuleHandleA(nullptr), id, text, sizeof text);
    return {text, static_cast<std::size_t>(length)};
}
