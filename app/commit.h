#pragma once

/// The commit that the program was built from, shortened, with a plus sign where its files were changed;
/// "unknown" for a build of sources without a history.
[[nodiscard]] const char* SourceCommit();
