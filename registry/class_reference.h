#pragma once

#include <windows.h>

#include <string_view>

#include "registry/file_reference_rules.h"

/// Tries to open a key under HKEY_CLASSES_ROOT with default access. @return the system's code.
[[nodiscard]] LSTATUS TryClassesKey(const char* relativePath);

/// Whether a key relative to HKEY_CLASSES_ROOT is absent, judged by the given rule.
[[nodiscard]] bool ClassesKeyMissing(std::string_view relativePath, MissingRule rule);

/// Whether a type library, class or application id is not registered. Only "not found", or a key that opens
/// but cannot be queried, counts as missing; any other refusal counts as present.
/// @param guid  for type libraries and classes with or without braces; for applications as it stands.
[[nodiscard]] bool TypeLibMissing(std::string_view guid);
[[nodiscard]] bool ClassIdMissing(std::string_view guid);
[[nodiscard]] bool AppIdMissing(std::string_view guid);
