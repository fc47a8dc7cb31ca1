#pragma once

#include <string>
#include <vector>

/// Whose write time a row shows: none, or that of a key so many levels above the row's own.
enum class Written { Never = -1, Here = 0, Above1 = 1, Above2 = 2, Above3 = 3 };

struct GoldenRow {
    std::string subkey;  // of the group's area; "" for the area itself
    Written written;
    std::string valueName;
    std::string dataReference;
};

/// The rows of one stage or one category place, or of a part of it.
struct GoldenGroup {
    std::string area;  // key path; "<user>" in it stands for the current user's key
    std::vector<GoldenRow> rows;
};

/// What one analysis shows of the rule plants, in its order: the deep scan, the class stages, and the
/// category places from 1 to 13, 14 to 25 and 26 to 37.
[[nodiscard]] std::vector<GoldenGroup> GoldenDeepRows();
[[nodiscard]] std::vector<GoldenGroup> GoldenClassRows();
[[nodiscard]] std::vector<GoldenGroup> GoldenRowsOfPlaces1To13();
[[nodiscard]] std::vector<GoldenGroup> GoldenRowsOfPlaces14To25();
[[nodiscard]] std::vector<GoldenGroup> GoldenRowsOfPlaces26To37();
