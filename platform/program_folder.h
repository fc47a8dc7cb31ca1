#pragma once

#include <string>

/// The folder of this program's executable, without a trailing backslash, as in "D:\Tools". The full path is
/// taken at most 260 characters long.
[[nodiscard]] std::string ProgramFolder();
