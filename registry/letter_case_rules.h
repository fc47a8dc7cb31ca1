#pragma once

// ASCII letters in the other case; every other byte stays. For the names that this program compares itself:
// the roots, endings of files, device names. Names of keys and values are compared by the system.

[[nodiscard]] constexpr char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] constexpr char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
