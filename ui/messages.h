#pragma once

#include <windows.h>

#include <string>

/// Tells the user something under the program's own title.
/// @param icon  MB_ICON...
void ShowMessage(HWND owner, const std::string& text, UINT icon = MB_ICONINFORMATION);

/// Asks a question with Yes and No under the program's own title. @return whether the answer was Yes.
[[nodiscard]] bool AskYesNo(HWND owner, const std::string& question);
