#pragma once

#include <string>

#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

/// Scans a key's tree on a worker thread, as the stages scan a hive; under another path where one is given.
WorkerEnd Scan(CRecordingView& view, const CScratchKey& key);
WorkerEnd Scan(CRecordingView& view, HKEY key, const std::string& path);

/// The rows of a scan as lines "value name|data reference".
[[nodiscard]] std::string RowsOf(const CScratchKey& key);

/// The same for a key with one value, whose text is stored with its terminator.
[[nodiscard]] std::string RowsOfValue(const std::string& name, const std::string& text, DWORD type = REG_SZ);

/// What the row of a value with this text refers to; empty: no row.
[[nodiscard]] std::string ReferenceOf(const std::string& text);
