#pragma once

#include <string>

/// The folder of this program's executable, without a trailing backslash, as in "D:\Tools"; empty when the
/// executable's full path is not known or longer than 260 characters.
[[nodiscard]] std::string ProgramFolder();
