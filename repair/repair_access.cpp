#include "repair/repair_access.h"

#include "registry/key_link.h"
#include "registry/key_ownership.h"
#include "registry/registry_access.h"
#include "repair/key_deletion.h"
#include "repair/reg_file.h"

namespace {

bool IsAbsent(const RepairTarget& target, const std::string& unit) {
    CUniqueKey key;
    const LSTATUS opened = OpenKeyItself(target.rootKey, unit.c_str(), KEY_QUERY_VALUE, key);
    return opened == ERROR_FILE_NOT_FOUND || opened == ERROR_PATH_NOT_FOUND;
}

}  // namespace

std::string KeyTextOf(const RepairTarget& target, const std::string& path) {
    return path.empty() ? target.rootName : target.rootName + "\\" + path;
}

LSTATUS OpenForced(HKEY root, const std::string& path, REGSAM access, CUniqueKey& key) {
    const LSTATUS opened = OpenKey(root, path.c_str(), access, key);
    if (opened != ERROR_ACCESS_DENIED) return opened;
    ForceKeyAccess(root, path.c_str());
    return OpenKey(root, path.c_str(), access, key);
}

bool ExportBranch(const RepairTarget& target, const std::string& path) {
    return target.undo.Export(KeyTextOf(target, path), ExportedLink::Followed) == ERROR_SUCCESS ||
           !target.undo.MustCopy();
}

bool ExportUnit(const RepairTarget& target, const std::string& unit) {
    CUniqueKey key;
    constexpr REGSAM kNeeded = KEY_QUERY_VALUE | kDeletionAccess;
    if (OpenKeyItself(target.rootKey, unit.c_str(), kNeeded, key) == ERROR_ACCESS_DENIED)
        ForceKeyAccess(target.rootKey, unit.c_str());
    key.Reset();
    const DWORD exported = target.undo.Export(KeyTextOf(target, unit), ExportedLink::Itself);
    if (exported == ERROR_SUCCESS || !target.undo.MustCopy()) return true;
    // A unit that is not there, though, leaves the entry to the next kind.
    target.lacksCopy = exported != export_errors::kKeyNotOpened || !IsAbsent(target, unit);
    return false;
}
