// Checks of what Explorer keeps for each file extension that the user has opened.

#include <string>

#include "analysis/check_walk.h"
#include "analysis/history/history_checks.h"
#include "registry/class_reference.h"

namespace {

const CheckArea kFileExts =
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)");

LSTATUS TryOpen(HKEY parent, const char* subkey) {
    CUniqueKey key;
    return OpenKey(parent, subkey, kAllAccess, key);
}

bool IsAbsent(HKEY parent, const char* subkey) { return TryOpen(parent, subkey) == ERROR_FILE_NOT_FOUND; }

void ReportEmptyDefault(const Subkey& entry, HKEY key) {
    const QueriedText value = QueryText(key, "", kValueDataBytes);
    // Deliberate: an absent default value also reads as an empty text, so it gives both rows.
    if (value.IsAbsent()) entry.Report(reasons::kNoContent);
    if (value.IsAbsent() || (value.Succeeded() && value.text.empty())) entry.Report(reasons::kNoContent);
}

void CheckUserChoice(const Subkey& entry, HKEY key) {
    if (!IsAbsent(key, "OpenWithProgids") || !IsAbsent(key, "OpenWithList")) return;
    const CUniqueKey choice = OpenForAll(key, "UserChoice");
    if (!choice) return;
    const QueriedText progId = QueryText(choice.Get(), "Progid", kValueDataBytes);
    if (progId.Succeeded() && TryClassesKey(progId.text.c_str()) == ERROR_FILE_NOT_FOUND)
        entry.Report(reasons::kProgIdMissing, "", progId.text.c_str());
}

bool ClassesRootHasValue(const char* name) {
    return ::RegQueryValueExA(HKEY_CLASSES_ROOT, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

void CheckOpenWithProgIds(const Subkey& entry, HKEY key) {
    const CUniqueKey list = OpenForAll(key, "OpenWithProgids");
    if (!list || !IsAbsent(key, "OpenWithList")) return;
    CValueReader first(kValueNameBytes, kValueDataBytes);
    if (first.Read(list.Get(), 0) == ERROR_NO_MORE_ITEMS) {
        entry.Report(reasons::kNoProgramList);
        return;
    }
    const std::string path = entry.path + R"(\OpenWithProgids)";
    ForEachValueOf(list.Get(), {kValueNameBytes, kValueDataBytes}, [&](const CValueReader& value) {
        // Deliberate: a value of the root, not a key, is looked for, and one that is there ends the walk.
        if (ClassesRootHasValue(value.Name())) return Walk::Stop;
        if (value.HasName() && value.HasData())
            ReportRow(path.c_str(), entry.writeTime.c_str(), value.Name(), value.Data(),
                      reasons::kProgIdMissing);
        return Walk::Next;
    });
}

void CheckExtension(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    const bool hasNoSubkeys = HasNoSubkeys(key.Get());
    if (hasNoSubkeys && TryClassesKey(entry.name) == ERROR_SUCCESS) ReportEmptyDefault(entry, key.Get());
    const bool hasApplication = QueryText(key.Get(), "Application", kValueDataBytes).Succeeded();
    if (hasNoSubkeys && !hasApplication) ReportEmptyDefault(entry, key.Get());
    CheckUserChoice(entry, key.Get());
    CheckOpenWithProgIds(entry, key.Get());
}

void ReportOpenWithList(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    const CUniqueKey list = OpenForAll(key.Get(), "OpenWithList");
    if (!list) return;
    const std::string path = entry.path + R"(\OpenWithList)";
    ForEachValueOf(list.Get(), {kValueNameBytes, kValueDataBytes}, [&](const CValueReader& value) {
        if (value.HasName())
            ReportRow(path.c_str(), entry.writeTime.c_str(), value.Name(), value.Data(), reasons::kHistory);
    });
    // Deliberate: one more row for the list itself, which cleaning then empties as a whole.
    ReportRow(path.c_str(), entry.writeTime.c_str(), nullptr, nullptr, reasons::kHistory);
}

}  // namespace

void CheckFileExts() { ForEachSubkey(kFileExts, &CheckExtension); }

void CheckFileExtsOpenWithList() { ForEachSubkey(kFileExts, &ReportOpenWithList); }
