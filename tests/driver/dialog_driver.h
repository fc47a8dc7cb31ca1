#pragma once

#include <windows.h>

#include "tests/driver/app_driver.h"

/// Waits for a dialog of this caption, which belongs to the program.
[[nodiscard]] HWND WaitForDialog(const CAppDriver& app, const char* caption);

/// Presses a button of a dialog by its number, without waiting for what that brings.
void PressButton(HWND dialog, int id);

/// Waits for a message box that says something of this kind, looks at nothing else, and presses a button.
/// @return the box's text.
std::string AnswerBox(const CAppDriver& app, const char* beginning, const char* button,
                      DWORD patience = kPatience);
