#include "analysis/deep_scan.h"

#include <cstdio>
#include <cstring>

#include "analysis/deep_scan_rules.h"
#include "analysis/report.h"
#include "registry/file_reference.h"
#include "registry/file_reference_rules.h"
#include "registry/registry_access.h"

namespace {

constexpr DWORD kPathBytes = 260;

class CSystemFolders : public CFolderSource {
public:
    [[nodiscard]] std::string WindowsFolder() const override { return ::WindowsFolder(); }

    [[nodiscard]] std::string Expand(const char* variable) const override {
        char folder[kPathBytes] = "";
        const DWORD bytes = ::ExpandEnvironmentStringsA(variable, folder, sizeof folder);
        return bytes == 0 || bytes > sizeof folder ? std::string() : std::string(folder);
    }
};

void ScanValue(const char* keyPath, ValueBuffers& value) {
    if (ValueIsSkipped(value.name, value.data)) return;
    DropPrefixes(value.data);
    // The buffer's spare byte stays out of it, so that a replacement leaves a terminator in the last place.
    ReplaceFolderVariable({value.data, kDataBytes}, CSystemFolders());

    char candidate[kPathBytes];
    if (ExtractFilePath(value.data, candidate)) ReportIfFileMissing(keyPath, value.name, candidate);
    // The name is judged last because its own extraction changes it; that row shows it as changed.
    if (ExtractFilePath(value.name, candidate)) ReportIfFileMissing(keyPath, value.name, candidate);
}

void ScanValues(HKEY key, const char* path) {
    ValueBuffers value;
    for (DWORD index = 0;; ++index) {
        PollCancel();
        ReportProgress(path);
        if (EndsWalk(EnumValue(key, index, value))) return;
        // Whatever else the call answered, the buffers are examined as it left them.
        ScanValue(path, value);
    }
}

void ScanSubkeys(HKEY key, const char* path) {
    char name[kNameBytes + 1];
    char childPath[kScanPathBytes];
    for (DWORD index = 0;; ++index) {
        const LSTATUS result = EnumSubkey(key, index, name);
        if (EndsWalk(result)) return;
        if (result != ERROR_SUCCESS) continue;
        const int length = std::snprintf(childPath, sizeof childPath, "%s\\%s", path, name);
        if (length < 0 || static_cast<std::size_t>(length) >= sizeof childPath) continue;
        CUniqueKey child;
        if (OpenKey(key, name, kReadAccess, child) == ERROR_SUCCESS)
            ScanHiveForDeadFiles(child.Get(), childPath);
    }
}

}  // namespace

void ScanHiveForDeadFiles(HKEY key, const char* path) {
    if (KeyIsSkipped(path)) return;
    ScanValues(key, path);
    ScanSubkeys(key, path);
}

void ScanLocalMachine() { ScanHiveForDeadFiles(HKEY_LOCAL_MACHINE, R"(\HKEY_LOCAL_MACHINE)"); }
void ScanCurrentUser() { ScanHiveForDeadFiles(HKEY_CURRENT_USER, R"(\HKEY_CURRENT_USER)"); }
void ScanUsers() { ScanHiveForDeadFiles(HKEY_USERS, R"(\HKEY_USERS)"); }
