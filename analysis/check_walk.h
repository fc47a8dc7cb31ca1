#pragma once

#include <windows.h>

#include <string>
#include <type_traits>
#include <utility>

#include "analysis/report.h"
#include "platform/owners.h"
#include "registry/key_path_rules.h"
#include "registry/registry_access.h"
#include "registry/value_reader.h"

/// A part of the registry that a check looks at: where it is, and how rows name it.
struct CheckArea {
    HKEY root;
    const char* subkey;  // "" for the root itself
    const char* path;    // key path
};

/// The area at a key path, whose root is one of the predefined ones. The path must last, as a literal does.
[[nodiscard]] CheckArea AreaAt(const char* path);

/// Buffer sizes in bytes that checks read with, where nothing else is said. A larger value is passed over, so
/// these decide what is seen.
constexpr DWORD kValueNameBytes = 250;
constexpr DWORD kValueDataBytes = 250;
constexpr DWORD kNamesOnly = 0;

/// A subkey that a walk has come to. The texts last as long as the visit.
struct Subkey {
    HKEY parent;  // open for all access; borrowed
    const char* name;
    std::string path;       // of the row: parent, name, and the walk's tail
    std::string writeTime;  // UTC

    void Report(Reason reason, const char* valueName = nullptr, const char* data = nullptr) const {
        ReportRow(path.c_str(), writeTime.c_str(), valueName, data, reason);
    }
};

/// What a visitor of values tells the walk.
enum class Walk { Next, Stop };

/// Opens a subkey for all access, as every check does: without the right to change an entry there is no use
/// in reporting it. @return empty when it does not open.
[[nodiscard]] CUniqueKey OpenForAll(HKEY parent, const char* subkey);

/// How a walk over subkeys differs from the usual one.
struct SubkeyWalk {
    const char* tail = "";         // what rows append to a subkey's path
    DWORD nameBytes = kNameBytes;  // longer names are passed over
    bool showsProgress = true;     // walks inside a walk leave the progress text alone
};

/// A walk over the subkeys of a subkey.
inline constexpr SubkeyWalk kInnerWalk{"", kNameBytes, false};

/// One step of a walk over subkeys. @return false at its end; `name` is empty where the index is to be
/// skipped.
[[nodiscard]] bool NextSubkey(HKEY key, DWORD index, const SubkeyWalk& walk, CWalkEnd& end,
                              char (&name)[kNameBytes + 1], FILETIME& written);

/// Calls a visitor that may or may not tell the walk how to go on.
template <class Visit, class Entry>
[[nodiscard]] Walk CallVisitor(Visit& visit, const Entry& entry) {
    if constexpr (std::is_same_v<std::invoke_result_t<Visit&, const Entry&>, Walk>) {
        return visit(entry);
    } else {
        visit(entry);
        return Walk::Next;
    }
}

/// Visits the subkeys of an open key: polls for a cancel before each, and shows it as the key under
/// examination.
template <class Visit>
void ForEachSubkeyOf(HKEY key, const std::string& path, Visit visit, const SubkeyWalk& walk = {}) {
    char name[kNameBytes + 1];
    FILETIME written{};
    CWalkEnd end(CWalkEnd::Of::Subkeys);
    for (DWORD index = 0; NextSubkey(key, index, walk, end, name, written); ++index) {
        PollCancel();
        if (name[0] == '\0') continue;
        const Subkey subkey{key, name, JoinKeyPath(path, name) + walk.tail,
                            FileTimeText(written).value_or("")};
        if (walk.showsProgress) ReportProgress(subkey.path.c_str());
        if (CallVisitor(visit, subkey) == Walk::Stop) return;
    }
}

/// Visits the subkeys of an area; of one that does not open, none.
template <class Visit>
void ForEachSubkey(const CheckArea& area, Visit visit, const SubkeyWalk& walk = {}) {
    const CUniqueKey key = OpenForAll(area.root, area.subkey);
    if (key) ForEachSubkeyOf(key.Get(), area.path, visit, walk);
}

/// Visits the values of an open key that fit the reader's buffers: polls for a cancel before each. The
/// visitor gets the reader.
template <class Visit>
void ForEachValueOf(HKEY key, CValueReader values, Visit visit) {
    CWalkEnd end(CWalkEnd::Of::Values);
    for (DWORD index = 0;; ++index) {
        PollCancel();
        const LSTATUS result = values.Read(key, index);
        if (end.IsReached(key, index, result)) return;
        if (result == ERROR_SUCCESS && CallVisitor(visit, values) == Walk::Stop) return;
    }
}

/// Visits the values of an area's key, which is shown as the key under examination.
template <class Visit>
void ForEachValue(const CheckArea& area, CValueReader values, Visit visit) {
    const CUniqueKey key = OpenForAll(area.root, area.subkey);
    if (!key) return;
    ReportProgress(area.path);
    ForEachValueOf(key.Get(), std::move(values), visit);
}

/// Adds a row without a write time, as checks do that read the values of one key.
inline void ReportUntimed(Reason reason, const char* path, const char* valueName = nullptr,
                          const char* data = nullptr) {
    ReportRow(path, "", valueName, data, reason);
}

/// Whether no file or folder of that name exists. The text is taken as it stands.
[[nodiscard]] bool PathIsMissing(const char* path);
[[nodiscard]] inline bool PathIsMissing(const std::string& path) { return PathIsMissing(path.c_str()); }
