#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Deletes what a former compaction left beside the hive files.
/// @return false at the first file that cannot be deleted: the system still runs on it, and has to be
/// restarted before hives can be compacted again.
[[nodiscard]] bool DeleteFormerCompaction();

/// Writes every loaded hive that has a file on the drive of Windows to a compact file beside it, and has the
/// system load that from its next start on. The first failure stops it; hives replaced by then stay so.
/// @return whether all hives are replaced.
[[nodiscard]] bool CompactHives();

/// One hive that has been compacted.
struct CompactedHive {
    std::string file;  // full path
    std::uint64_t bytesBefore;
    std::uint64_t bytesAfter;
};

/// The hives whose file before and after a compaction are both there.
[[nodiscard]] std::vector<CompactedHive> FindCompactedHives();
