#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The names that a key path is made of; at least one, which may be empty.
using Names = std::vector<std::string>;

[[nodiscard]] Names NamesOf(const std::string& path);

/// The path that the first so many names make. @param count  at least 1.
[[nodiscard]] std::string PathOf(const Names& names, std::size_t count);
