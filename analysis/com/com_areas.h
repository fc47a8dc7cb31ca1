#pragma once

#include "analysis/check_walk.h"
#include "registry/value_reader.h"

inline const CheckArea kClassIds = AreaAt(R"(\HKEY_CLASSES_ROOT\CLSID)");
inline const CheckArea kTypeLibs = AreaAt(R"(\HKEY_CLASSES_ROOT\TypeLib)");
inline const CheckArea kInterfaces = AreaAt(R"(\HKEY_CLASSES_ROOT\Interface)");
inline const CheckArea kTopLevelKeys = AreaAt(R"(\HKEY_CLASSES_ROOT)");

/// A reader for values of any size; these are the sizes that it starts with.
[[nodiscard]] inline CValueReader WholeValues() { return {kValueNameBytes, kValueDataBytes, TooLarge::Grow}; }

static_assert(kValueNameBytes <= kNameBytes && kValueDataBytes <= kDataBytes);

/// A key's first value, read whole.
struct FirstValue {
    explicit FirstValue(HKEY key) : value(WholeValues()), result(value.Read(key, 0)) {}

    [[nodiscard]] bool IsAbsent() const { return result == ERROR_NO_MORE_ITEMS; }
    /// Whether it is the default value, with data.
    [[nodiscard]] bool IsDefaultWithData() const {
        return result == ERROR_SUCCESS && !value.HasName() && value.HasData();
    }

    /// Whether it has a name or data that KeyTreeIsEmpty sees, whose buffers are of a fixed size. A value
    /// that outgrows the reader's own first buffers may be too large for them.
    [[nodiscard]] bool IsSeenByTreeTest() const {
        return result == ERROR_SUCCESS && !value.HasGrown() && (value.HasName() || value.HasData());
    }

    CValueReader value;
    LSTATUS result;
};

/// Adds a row for a key below the one that a walk has come to; the time is that one's.
inline void ReportBelow(Reason reason, const Subkey& entry, const std::string& tail, const char* valueName,
                        const char* data) {
    ReportRow(JoinKeyPath(entry.path, tail).c_str(), entry.writeTime.c_str(), valueName, data, reason);
}
