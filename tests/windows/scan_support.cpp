#include "scan_support.h"

#include <doctest/doctest.h>

#include "analysis/deep_scan.h"

WorkerEnd Scan(CRecordingView& view, HKEY key, const std::string& path) {
    return view.Run([&] { ScanHiveForDeadFiles(key, path.c_str()); });
}

WorkerEnd Scan(CRecordingView& view, const CScratchKey& key) { return Scan(view, key.Get(), key.Path()); }

std::string RowsOf(const CScratchKey& key) {
    CRecordingView view;
    const WorkerEnd end = Scan(view, key);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    return view.RowLines();
}

std::string RowsOfValue(const std::string& name, const std::string& text, DWORD type) {
    const CScratchKey key;
    SetText(key.Get(), name, text, type);
    return RowsOf(key);
}

std::string ReferenceOf(const std::string& text) {
    const CScratchKey key;
    SetText(key.Get(), "x", text);
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    const std::vector<ViewEvent> rows = view.Rows();
    if (rows.empty()) return {};
    CHECK(rows.size() == 1);
    CHECK(rows[0].valueName == "x");
    return rows[0].data.value_or("(null)");
}
