#pragma once

#include <string>

/// A file's bytes; empty where there is no such file.
[[nodiscard]] std::string FileText(const std::string& path);
