#include "tests/e2e/shown_rows.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>

#include "tests/driver/wait.h"

namespace {

struct Root {
    const char* path;
    HKEY key;
};

const Root kRoots[] = {
    {R"(\HKEY_CLASSES_ROOT\)", HKEY_CLASSES_ROOT},
    {R"(\HKEY_CURRENT_USER\)", HKEY_CURRENT_USER},
    {R"(\HKEY_LOCAL_MACHINE\)", HKEY_LOCAL_MACHINE},
    {R"(\HKEY_USERS\)", HKEY_USERS},
};

// Far enough to see past the rows of one rule that are missing, or that should not be there.
constexpr std::ptrdiff_t kLookAhead = 60;

std::string Describe(const ListRow& row) {
    return row.key + " | " + row.writeTime + " | " + row.valueName + " | " + row.dataReference;
}

using Position = std::vector<ListRow>::const_iterator;

Position FindAhead(Position begin, Position end, const ListRow& row) {
    const Position last = end - begin > kLookAhead ? begin + kLookAhead : end;
    const Position found = std::find(begin, last, row);
    return found == last ? end : found;
}

}  // namespace

KeyPlace PlaceOf(const std::string& keyPath) {
    for (const Root& root : kRoots)
        if (keyPath.starts_with(root.path)) return {root.key, keyPath.substr(std::string(root.path).size())};
    throw CDriverError("no root key is known of " + keyPath);
}

void CheckSameRows(const std::vector<ListRow>& found, const std::vector<ListRow>& expected) {
    Position next = found.begin();
    for (const ListRow& row : expected) {
        const Position same = FindAhead(next, found.end(), row);
        CHECK_MESSAGE(same != found.end(), "missing: " << Describe(row));
        if (same == found.end()) continue;
        for (; next != same; ++next) FAIL_CHECK("not expected: " << Describe(*next));
        ++next;
    }
    for (; next != found.end(); ++next) FAIL_CHECK("not expected: " << Describe(*next));
}
