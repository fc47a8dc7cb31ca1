#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// The pixels of a part of the screen, line by line from the top; empty when the screen cannot be read.
[[nodiscard]] std::vector<DWORD> ScreenPixels(const RECT& rect);

/// Whether anything is drawn there: not all pixels have one colour.
[[nodiscard]] bool IsDrawnOn(const RECT& rect);

/// The name of the system's message icon that a control shows: "error", "question", "warning" or
/// "information". A box can be found before it is painted, so the picture gets kPatience to become the
/// expected one; after that the name of the icon that looks most like it is returned.
[[nodiscard]] std::string ShownSystemIcon(HWND control, const std::string& expected);

/// Has the service that runs beside us take a picture of the whole screen.
/// @param name  the picture's file name without ending.
/// @return false when no such service was given in the environment variable VELLUMOR_SHOTS.
/// @throws CDriverError when it does not answer, or fails.
bool TakePicture(const std::string& name);
