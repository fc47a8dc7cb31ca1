#include "analysis/com/com_checks.h"

#include <set>
#include <string>

#include "analysis/com/com_areas.h"
#include "registry/class_reference.h"
#include "registry/file_reference.h"
#include "registry/key_tree.h"

namespace {

void CheckProgIdLink(const Subkey& entry, HKEY classKey) {
    const CUniqueKey link = OpenForAll(classKey, "ProgID");
    if (!link) return;
    const std::string progId = QueryWholeText(link.Get(), "").text;
    if (!progId.empty() && ClassesKeyMissing(progId, MissingRule::Strict))
        ReportBelow(reasons::kProgIdMissing, entry, "ProgID", "", progId.c_str());
}

void CheckVersionIndependentLink(const Subkey& entry, HKEY classKey) {
    const CUniqueKey link = OpenForAll(classKey, "VersionIndependentProgID");
    if (!link) return;
    const FirstValue first(link.Get());
    if (first.IsDefaultWithData() && ClassesKeyMissing(first.value.Data(), MissingRule::Strict))
        ReportBelow(reasons::kProgIdMissing, entry, "VersionIndependentProgID", "", first.value.Data());
}

void CheckAppIdLink(const Subkey& entry, HKEY classKey) {
    const std::string id = QueryWholeText(classKey, "AppID").text;
    if (!id.empty() && AppIdMissing(id)) entry.Report(reasons::kAppIdMissing, "AppID", id.c_str());
}

void CheckHelpFolder(const Subkey& library, const Subkey& version, HKEY versionKey) {
    const CUniqueKey key = OpenForAll(versionKey, "HELPDIR");
    if (!key) return;
    const std::string tail = std::string(version.name) + R"(\HELPDIR)";
    const FirstValue first(key.Get());
    const char* folder = first.value.Data();
    if (first.IsAbsent())
        ReportBelow(reasons::kNoData, library, tail, "", "");
    else if (first.result == ERROR_SUCCESS && !CommandFileExists(folder) && PathIsMissing(folder))
        ReportBelow(reasons::kFileMissing, library, tail, first.value.Name(), folder);
}

void CheckLocaleModules(const Subkey& library, const Subkey& version, const Subkey& locale) {
    const CUniqueKey localeKey = OpenForAll(locale.parent, locale.name);
    if (!localeKey) return;
    for (const char* platform : {"Win16", "Win32"}) {
        const CUniqueKey key = OpenForAll(localeKey.Get(), platform);
        if (!key) continue;
        const std::string tail = std::string(locale.name) + "\\" + platform;
        const FirstValue first(key.Get());
        const bool isKnown = first.result == ERROR_SUCCESS || first.IsAbsent();
        // Without a value the text is empty, and an empty text is never found.
        if (isKnown && !CommandFileExists(first.value.Data()))
            ReportBelow(first.value.HasData() ? reasons::kModuleMissing : reasons::kNoData, library,
                        std::string(version.name) + "\\" + tail, "", first.value.Data());
    }
}

void CheckLibrary(const Subkey& library) {
    const CUniqueKey libraryKey = OpenForAll(library.parent, library.name);
    if (!libraryKey) return;
    if (HoldsNothing(libraryKey.Get())) library.Report(reasons::kNothingInKey);
    ForEachSubkeyOf(
        libraryKey.Get(), library.path,
        [&](const Subkey& version) {
            const CUniqueKey versionKey = OpenForAll(version.parent, version.name);
            if (!versionKey) return;
            CheckHelpFolder(library, version, versionKey.Get());
            ForEachSubkeyOf(
                versionKey.Get(), version.path,
                [&](const Subkey& locale) { CheckLocaleModules(library, version, locale); }, kInnerWalk);
        },
        kInnerWalk);
}

void CheckTopLevelKey(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    if (HasNoSubkeys(key.Get())) {
        const FirstValue first(key.Get());
        const bool isEmptyText = first.result == ERROR_SUCCESS && first.value.Type() == REG_SZ &&
                                 !first.value.HasName() && !first.value.HasData();
        if (first.IsAbsent() || isEmptyText)
            entry.Report(reasons::kNoContent, first.value.Name(), first.value.Data());
    }
    const CUniqueKey link = OpenForAll(key.Get(), "CLSID");
    if (!link) return;
    const FirstValue classId(link.Get());
    if (classId.IsDefaultWithData() && ClassIdMissing(classId.value.Data()))
        ReportBelow(reasons::kClassMissing, entry, "CLSID", "", classId.value.Data());
}

struct InterfaceLink {
    const char* subkey;
    bool (*isMissing)(std::string_view guid);
    Reason reason;
};
constexpr InterfaceLink kInterfaceLinks[] = {
    {"TypeLib", &TypeLibMissing, reasons::kTypeLibMissing},
    {"ProxyStubClsid", &ClassIdMissing, reasons::kClassMissing},
    {"ProxyStubClsid32", &ClassIdMissing, reasons::kClassMissing},
    // Deliberate: an interface, yet looked up among the classes.
    {"BaseInterface", &ClassIdMissing, reasons::kClassMissing},
};

/// The identifiers that were found registered while one check ran. Most interfaces name one of a few classes
/// and libraries, and each look-up costs three registry calls.
class CRegisteredIds {
public:
    [[nodiscard]] bool IsMissing(const InterfaceLink& link, const char* guid) {
        std::set<std::string, std::less<>>& known =
            link.isMissing == &TypeLibMissing ? m_libraries : m_classes;
        if (known.contains(std::string_view(guid))) return false;
        if (link.isMissing(guid)) return true;
        known.emplace(guid);
        return false;
    }

private:
    std::set<std::string, std::less<>> m_libraries;
    std::set<std::string, std::less<>> m_classes;
};

/// Whether nothing of worth stands in a link's tree. The first value, which has been read already, decides it
/// for nearly all; it does only where the test of the tree would see it too.
bool LinkIsEmpty(const FirstValue& first, HKEY key, const std::string& path) {
    if (first.IsSeenByTreeTest()) {
        PollCancel();
        return false;
    }
    return KeyTreeIsEmpty(key, path, &PollCancel);
}

void CheckInterface(const Subkey& entry, CRegisteredIds& registered) {
    const CUniqueKey interfaceKey = OpenForAll(entry.parent, entry.name);
    if (!interfaceKey) return;
    for (const InterfaceLink& link : kInterfaceLinks) {
        const CUniqueKey key = OpenForAll(interfaceKey.Get(), link.subkey);
        if (!key) continue;
        const FirstValue first(key.Get());
        if (LinkIsEmpty(first, key.Get(), entry.path + "\\" + link.subkey)) {
            ReportBelow(reasons::kNothingInTree, entry, link.subkey, "", "");
            continue;
        }
        if (first.IsDefaultWithData() && registered.IsMissing(link, first.value.Data()))
            ReportBelow(link.reason, entry, link.subkey, "", first.value.Data());
    }
}

}  // namespace

void CheckClassLinks() {
    ForEachSubkey(kClassIds, [](const Subkey& entry) {
        const CUniqueKey key = OpenForAll(entry.parent, entry.name);
        if (!key) return;
        if (HoldsNothing(key.Get())) entry.Report(reasons::kNothingInKey);
        CheckProgIdLink(entry, key.Get());
        CheckVersionIndependentLink(entry, key.Get());
        CheckAppIdLink(entry, key.Get());
    });
}

void CheckTypeLibraries() { ForEachSubkey(kTypeLibs, &CheckLibrary); }

void CheckClassesRootKeys() { ForEachSubkey(kTopLevelKeys, &CheckTopLevelKey); }

void CheckClassTypeLibLinks() {
    ForEachSubkey(kClassIds, [](const Subkey& entry) {
        const CUniqueKey classKey = OpenForAll(entry.parent, entry.name);
        if (!classKey) return;
        const CUniqueKey link = OpenForAll(classKey.Get(), "TypeLib");
        if (!link) return;
        const std::string library = QueryWholeText(link.Get(), "").text;
        if (!library.empty() && TypeLibMissing(library))
            ReportBelow(reasons::kTypeLibMissing, entry, "TypeLib", "", library.c_str());
    });
}

void CheckInterfaces() {
    CRegisteredIds registered;
    ForEachSubkey(kInterfaces, [&registered](const Subkey& entry) { CheckInterface(entry, registered); });
}
