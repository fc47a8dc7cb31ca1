#pragma once

#include <windows.h>

#include <string_view>

/// Writes a whole text to a file or pipe. @return false when some of it could not be written.
[[nodiscard]] bool WriteAll(HANDLE file, std::string_view text);
