#pragma once

#include <windows.h>

#include <string>

/// A command's string resource reads "prompt\ntooltip"; these give its two halves, empty where it has none.
[[nodiscard]] std::string CommandPrompt(UINT id);
[[nodiscard]] std::string CommandTip(UINT id);

/// The status-bar text for a WM_MENUSELECT: empty for popups, separators and a menu that closes.
[[nodiscard]] std::string MenuPrompt(UINT id, UINT flags, bool menuIsOpen);
