#include "analysis/classes/class_checks.h"

#include <string>

#include "analysis/check_walk.h"
#include "registry/class_reference.h"
#include "registry/key_tree.h"

namespace {

const CheckArea kClassesRoot = AreaAt(R"(\HKEY_CLASSES_ROOT)");
const CheckArea kMimeTypes = AreaAt(R"(\HKEY_CLASSES_ROOT\MIME\Database\Content Type)");
const CheckArea kAppIds = AreaAt(R"(\HKEY_CLASSES_ROOT\AppID)");

constexpr DWORD kVerbNameBytes = 100;
constexpr DWORD kIconDataBytes = 100;
constexpr DWORD kTypeNameBytes = 260;
constexpr DWORD kClassIdBytes = 100;

bool ClassesKeyIsNotFound(const std::string& path) {
    return TryClassesKey(path.c_str()) == ERROR_FILE_NOT_FOUND;
}

/// @return whether the key can have subkeys of its own: false where it has been seen to have none.
bool CheckClassContent(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key || !HasNoSubkeys(key.Get())) return true;
    CValueReader values(kValueNameBytes, kValueDataBytes);
    const LSTATUS first = values.Read(key.Get(), 0);
    if (first == ERROR_NO_MORE_ITEMS || first == ERROR_FILE_NOT_FOUND)
        ReportUntimed(reasons::kNothingInKey, entry.path.c_str());
    return false;
}

bool HasCommand(HKEY shell) {
    bool found = false;
    const SubkeyWalk verbs{"", kVerbNameBytes, false};
    ForEachSubkeyOf(
        shell, "",
        [&found](const Subkey& verb) {
            if (!OpenForAll(verb.parent, (std::string(verb.name) + R"(\command)").c_str())) return Walk::Next;
            found = true;
            return Walk::Stop;
        },
        verbs);
    return found;
}

void CheckShell(const Subkey& entry) {
    const CUniqueKey shell = OpenForAll(entry.parent, (std::string(entry.name) + R"(\shell)").c_str());
    if (!shell) return;
    const std::string path = entry.path + R"(\shell)";
    if (!HasCommand(shell.Get())) ReportUntimed(reasons::kNoCommand, path.c_str());
    if (!HasNoSubkeys(shell.Get())) return;
    ForEachValueOf(shell.Get(), {kValueNameBytes, kValueDataBytes}, [&path](const CValueReader& value) {
        if (!value.HasName() && !value.HasData()) ReportUntimed(reasons::kEmptyDefault, path.c_str());
    });
}

void CheckDefaultIcon(const Subkey& entry) {
    const CUniqueKey icon = OpenForAll(entry.parent, (std::string(entry.name) + R"(\DefaultIcon)").c_str());
    if (!icon || !HasNoSubkeys(icon.Get())) return;
    const std::string path = entry.path + R"(\DefaultIcon)";
    const QueriedText value = QueryText(icon.Get(), "", kIconDataBytes);
    // Deliberate: no query answers so, an absent value being "not found"; the next test sees to that one.
    if (value.result == ERROR_NO_MORE_ITEMS) ReportUntimed(reasons::kEmptyDefault, path.c_str());
    if (value.IsAbsent() || (value.Succeeded() && value.text.empty()))
        ReportUntimed(reasons::kEmptyDefault, path.c_str());
}

bool IsFileType(const Subkey& entry) { return entry.name[0] == '.'; }

void CheckContentType(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    if (KeyTreeIsEmpty(key.Get(), entry.path, &PollCancel)) entry.Report(reasons::kNothingInTree);
    const QueriedText extension = QueryText(key.Get(), "Extension", kValueDataBytes);
    if (extension.Succeeded() && ClassesKeyIsNotFound(extension.text))
        entry.Report(reasons::kFileTypeMissing, "Extension", extension.text.c_str());
    const QueriedText classId = QueryText(key.Get(), "CLSID", kClassIdBytes);
    if (classId.Succeeded() && ClassesKeyIsNotFound(R"(CLSID\)" + classId.text))
        entry.Report(reasons::kClassMissing, "CLSID", classId.text.c_str());
}

void CheckCurrentVersion(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    const CUniqueKey pointer = OpenForAll(key.Get(), "CurVer");
    if (!pointer) return;
    CValueReader value(kValueNameBytes, kValueDataBytes);
    const LSTATUS result = value.Read(pointer.Get(), 0);
    const auto isDead = [&value] {
        return !value.HasName() &&
               (!value.HasData() || ClassesKeyMissing(value.Data(), MissingRule::Lenient));
    };
    if (result == ERROR_NO_MORE_ITEMS || (result == ERROR_SUCCESS && isDead()))
        entry.Report(reasons::kCurrentVersionMissing, value.Name(), value.Data());
}

}  // namespace

void CheckClassKeys() {
    ForEachSubkey(kClassesRoot, [](const Subkey& entry) {
        if (!CheckClassContent(entry)) return;
        CheckShell(entry);
        CheckDefaultIcon(entry);
    });
}

void CheckEmptyFileTypes() {
    ForEachSubkey(kClassesRoot, [](const Subkey& entry) {
        if (!IsFileType(entry)) return;
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (key && KeyTreeIsEmpty(key.Get(), entry.path, &PollCancel)) entry.Report(reasons::kNothingInTree);
    });
}

void CheckFileTypeLinks() {
    ForEachSubkey(kClassesRoot, [](const Subkey& entry) {
        if (!IsFileType(entry)) return;
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (!key) return;
        const QueriedText type = QueryText(key.Get(), "", kTypeNameBytes);
        if (!type.text.empty() && ClassesKeyIsNotFound(type.text))
            entry.Report(reasons::kFileTypeMissing, "", type.text.c_str());
        if (HoldsNothing(key.Get())) entry.Report(reasons::kNothingInKey);
    });
}

void CheckCurrentVersions() { ForEachSubkey(kClassesRoot, &CheckCurrentVersion, {R"(\CurVer)"}); }

void CheckMimeTypes() { ForEachSubkey(kMimeTypes, &CheckContentType); }

void CheckAppIds() {
    ForEachSubkey(kAppIds, [](const Subkey& entry) {
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (!key) return;
        const QueriedText id = QueryText(key.Get(), "AppID", kValueDataBytes);
        if (id.Succeeded() && AppIdMissing(id.text))
            entry.Report(reasons::kAppIdMissing, "AppID", id.text.c_str());
    });
}
