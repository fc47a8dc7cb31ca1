#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/driver/remote_list.h"

/// Values with file references, dead ones and others, under a key of our own in HKEY_LOCAL_MACHINE and in
/// HKEY_CURRENT_USER. They are planted once, before the first analysis, and removed when the tests end.
class CPlantedValues {
public:
    CPlantedValues();
    CPlantedValues(const CPlantedValues&) = delete;
    CPlantedValues& operator=(const CPlantedValues&) = delete;
    ~CPlantedValues();

    /// The rows that an analysis has to show for them, in order.
    [[nodiscard]] std::vector<ListRow> ExpectedRows() const;
    /// How many of these the first hive gives.
    [[nodiscard]] static int RowsPerHive();
};

const CPlantedValues& PlantedValues();

/// Whether a row belongs to a planted key.
[[nodiscard]] bool IsPlanted(const ListRow& row);

/// A key's last write time in UTC, and in local time, as the list writes times.
struct WriteTimes {
    std::string utc;
    std::string local;
};
[[nodiscard]] WriteTimes WriteTimesOf(HKEY root, const std::string& subkey);

/// The registry's own spelling of a subkey's name.
[[nodiscard]] std::string SpellingOf(HKEY key, const std::string& name);

/// The name of the current user's key under HKEY_USERS.
[[nodiscard]] std::string UserName();
