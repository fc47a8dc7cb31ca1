#include "repair/repair_access.h"

#include "registry/key_link.h"
#include "registry/key_ownership.h"
#include "registry/registry_access.h"
#include "repair/key_deletion.h"
#include "repair/reg_file.h"

namespace {

bool Export(const RepairTarget& target, const std::string& path, ExportedLink link) {
    return target.undo.Export(KeyTextOf(target, path), link) == ERROR_SUCCESS || !target.undo.MustCopy();
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
    return Export(target, path, ExportedLink::Followed);
}

bool ExportUnit(const RepairTarget& target, const std::string& unit) {
    CUniqueKey key;
    constexpr REGSAM kNeeded = KEY_QUERY_VALUE | kDeletionAccess;
    if (OpenKeyItself(target.rootKey, unit.c_str(), kNeeded, key) == ERROR_ACCESS_DENIED)
        ForceKeyAccess(target.rootKey, unit.c_str());
    key.Reset();
    return Export(target, unit, ExportedLink::Itself);
}
