#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Reading the windows of another program. A window that is gone has no text, no children and answers 0.

/// Sends a message and waits for the answer.
/// @throws CDriverError when the window does not answer in time.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// @return at most 8191 bytes.
[[nodiscard]] std::string TextOf(HWND window);
[[nodiscard]] std::string ClassOf(HWND window);
[[nodiscard]] DWORD StyleOf(HWND window);
[[nodiscard]] bool HasClass(HWND window, const char* className);

/// The direct children, in the order of their making.
[[nodiscard]] std::vector<HWND> ChildrenOf(HWND window);
/// The visible top-level windows of a process, topmost first.
[[nodiscard]] std::vector<HWND> TopWindowsOf(DWORD processId);

/// A window's rectangle on the screen.
[[nodiscard]] RECT ScreenRect(HWND window);
/// A window's rectangle in the client coordinates of another.
[[nodiscard]] RECT RectIn(HWND window, HWND parent);
/// Its client area, from (0, 0).
[[nodiscard]] RECT ClientRect(HWND window);
