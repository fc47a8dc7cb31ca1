#pragma once

#include <windows.h>

#include <string_view>

/// Runs before each value and subkey of a walk; it ends the walk by throwing.
using CancelPoll = void (*)();

/// Whether nothing of worth stands anywhere in a key's tree: no value with a name, no value with non-empty
/// text. A default value with empty data does not count, nor does a subkey that cannot be opened. A tree that
/// goes on below the deepest level is not looked at so far, and not empty.
/// @param key   open for reading; borrowed.
/// @param path  the key's path.
[[nodiscard]] bool KeyTreeIsEmpty(HKEY key, std::string_view path, CancelPoll poll);
