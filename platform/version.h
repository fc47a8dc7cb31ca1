#pragma once

#include <string>

/// The commit that the program was built from, shortened, with a plus sign where its files were changed;
/// "unknown" for a build of sources without a history.
[[nodiscard]] const char* SourceCommit();

/// The line that tells one build from another, as in "Vellumor v4.55 (x86, built from 1a2b3c4d5e6f)".
[[nodiscard]] std::string VersionLine(const std::string& title);
