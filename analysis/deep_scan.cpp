#include "analysis/deep_scan.h"

#include <cstdio>
#include <cstring>
#include <list>
#include <optional>
#include <string>

#include "analysis/deep_scan_rules.h"
#include "analysis/report.h"
#include "registry/file_reference.h"
#include "registry/file_reference_rules.h"
#include "registry/registry_access.h"

namespace {

constexpr DWORD kPathBytes = 260;

/// The system's folders, each asked for once: they do not change while a scan runs, and most texts that begin
/// with a variable begin with the same few.
class CSystemFolders : public CFolderSource {
public:
    [[nodiscard]] std::string_view WindowsFolder() const override {
        if (!m_windowsFolder.has_value()) m_windowsFolder = ::WindowsFolder();
        return *m_windowsFolder;
    }

    [[nodiscard]] std::string_view Expand(const char* variable) const override {
        for (const Expansion& known : m_expansions)
            if (std::strcmp(known.variable, variable) == 0) return known.folder;
        char folder[kPathBytes] = "";
        const DWORD bytes = ::ExpandEnvironmentStringsA(variable, folder, sizeof folder);
        const bool fits = bytes != 0 && bytes <= sizeof folder;
        return m_expansions.emplace_back(Expansion{variable, fits ? folder : ""}).folder;
    }

private:
    struct Expansion {
        const char* variable;  // a literal of the rules
        std::string folder;
    };
    mutable std::optional<std::string> m_windowsFolder;
    mutable std::list<Expansion> m_expansions;  // their texts stay where they are
};

/// One walk over a tree. For a value nothing is allocated, and nothing asked of the system but its
/// enumeration, unless it holds a path.
class CDeepScan {
public:
    void ScanKey(HKEY key, const char* path) {
        if (KeyIsSkipped(path)) return;
        ScanValues(key, path);
        ScanSubkeys(key, path);
    }

private:
    void ScanValue(const char* keyPath, ValueBuffers& value) const {
        if (ValueIsSkipped(value.name, value.data)) return;
        DropPrefixes(value.data);
        // The buffer's spare byte stays out of it, so that a replacement leaves a terminator in the last
        // place.
        ReplaceFolderVariable({value.data, kDataBytes}, m_folders);

        char candidate[kPathBytes];
        if (ExtractFilePath(value.data, candidate)) ReportIfFileMissing(keyPath, value.name, candidate);
        // The name is judged last because its own extraction changes it; that row shows it as changed.
        if (ExtractFilePath(value.name, candidate)) ReportIfFileMissing(keyPath, value.name, candidate);
    }

    void ScanValues(HKEY key, const char* path) const {
        ValueBuffers value;
        CWalkEnd end(CWalkEnd::Of::Values);
        for (DWORD index = 0;; ++index) {
            PollCancel();
            ReportProgress(path);
            if (end.IsReached(key, index, EnumValue(key, index, value))) return;
            // Whatever else the call answered, the buffers are examined as it left them.
            ScanValue(path, value);
        }
    }

    void ScanSubkeys(HKEY key, const char* path) {
        char name[kNameBytes + 1];
        char childPath[kScanPathBytes];
        CWalkEnd end(CWalkEnd::Of::Subkeys);
        for (DWORD index = 0;; ++index) {
            const LSTATUS result = EnumSubkey(key, index, name);
            if (end.IsReached(key, index, result)) return;
            if (result != ERROR_SUCCESS) continue;
            const int length = std::snprintf(childPath, sizeof childPath, "%s\\%s", path, name);
            if (length < 0 || static_cast<std::size_t>(length) >= sizeof childPath) continue;
            CUniqueKey child;
            if (OpenKey(key, name, kReadAccess, child) == ERROR_SUCCESS) ScanKey(child.Get(), childPath);
        }
    }

    CSystemFolders m_folders;
};

}  // namespace

void ScanHiveForDeadFiles(HKEY key, const char* path) { CDeepScan().ScanKey(key, path); }

void ScanLocalMachine() { ScanHiveForDeadFiles(HKEY_LOCAL_MACHINE, R"(\HKEY_LOCAL_MACHINE)"); }
void ScanCurrentUser() { ScanHiveForDeadFiles(HKEY_CURRENT_USER, R"(\HKEY_CURRENT_USER)"); }
void ScanUsers() { ScanHiveForDeadFiles(HKEY_USERS, R"(\HKEY_USERS)"); }
