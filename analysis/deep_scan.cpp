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
#include "registry/key_link.h"
#include "registry/registry_access.h"
#include "registry/subkey_order.h"

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
    enum class Opened { MayBeLink, NoLink };

    /// @return false for a link, which has not been followed.
    bool ScanKey(HKEY key, const char* path, Opened opened) {
        if (KeyIsSkipped(path)) return true;
        if (!ScanValues(key, path, opened)) return false;
        ScanSubkeys(key, path);
        return true;
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

    /// @return false for a link.
    [[nodiscard]] bool ScanValues(HKEY key, const char* path, Opened opened) const {
        ValueBuffers value;
        CWalkEnd end(CWalkEnd::Of::Values);
        for (DWORD index = 0;; ++index) {
            PollCancel();
            ReportProgress(path);
            if (end.IsReached(key, index, EnumValue(key, index, value))) return true;
            if (opened == Opened::MayBeLink && std::strcmp(value.name, kLinkValueName) == 0 && MayBeLink(key))
                return false;
            // Whatever else the call answered, the buffers are examined as it left them. But of a name with a
            // zero byte what is left names another value, which would be cleaned in the place of this one.
            if (!value.HasHiddenName()) ScanValue(path, value);
        }
    }

    void ScanSubkeys(HKEY key, const char* path) {
        char name[kNameBytes + 1];
        char childPath[kScanPathBytes];
        CWalkEnd end(CWalkEnd::Of::Subkeys);
        CSubkeyOrder order;
        for (DWORD index = 0;; ++index) {
            const LSTATUS result = EnumSubkey(key, index, name);
            if (end.IsReached(key, index, result)) return;
            if (result != ERROR_SUCCESS || !order.IsFirst(key, index, name)) continue;
            const int length = std::snprintf(childPath, sizeof childPath, "%s\\%s", path, name);
            if (length < 0 || static_cast<std::size_t>(length) >= sizeof childPath) continue;
            CUniqueKey child;
            if (OpenKeyItself(key, name, kReadAccess, child) != ERROR_SUCCESS) continue;
            if (!ScanKey(child.Get(), childPath, Opened::MayBeLink))
                ScanTarget(key, name, child.Get(), childPath);
        }
    }

    void ScanTarget(HKEY parent, const char* name, HKEY link, const char* path) {
        CUniqueKey target;
        if (OpenKey(parent, name, kReadAccess, target) != ERROR_SUCCESS) return;
        // Any key may have the value that tells where a link leads.
        if (IsSameKey(link, target.Get()) || m_links.MayFollow(link, target.Get()))
            (void)ScanKey(target.Get(), path, Opened::NoLink);
    }

    CSystemFolders m_folders;
    CFollowedLinks m_links;
};

}  // namespace

void ScanHiveForDeadFiles(HKEY key, const char* path) {
    using Scan = CDeepScan;
    (void)Scan().ScanKey(key, path, Scan::Opened::NoLink);
}

void ScanLocalMachine() { ScanHiveForDeadFiles(HKEY_LOCAL_MACHINE, R"(\HKEY_LOCAL_MACHINE)"); }
void ScanCurrentUser() { ScanHiveForDeadFiles(HKEY_CURRENT_USER, R"(\HKEY_CURRENT_USER)"); }
void ScanUsers() { ScanHiveForDeadFiles(HKEY_USERS, R"(\HKEY_USERS)"); }
