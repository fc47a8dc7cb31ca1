#pragma once

#include <windows.h>

#include <string>

#include "check_support.h"

/// An area of the scratch registry, and rows of what is planted in it.
class CScratchArea {
public:
    CScratchArea(CScratchRegistry& registry, HKEY root, std::string area);

    /// The area's key, or a key below it; made where it does not exist.
    HKEY Key(const std::string& below = "");
    void Add(const std::string& below, const std::string& name, const std::string& text, DWORD type = REG_SZ);

    /// Lines of rows with and without a write time.
    [[nodiscard]] std::string Timed(const std::string& below, const std::string& name,
                                    const std::string& data) const;
    [[nodiscard]] std::string Untimed(const std::string& below, const std::string& name,
                                      const std::string& data) const;
    [[nodiscard]] std::string Path(const std::string& below = "") const;

private:
    CScratchRegistry& m_registry;
    HKEY m_root;
    std::string m_area;
};

/// What most tests need: one area in a registry of its own.
struct OneArea {
    OneArea(HKEY root, const char* path) : area(registry, root, path) {}
    CScratchRegistry registry;
    CScratchArea area;
};

/// One way to make a check report: an entry that is planted under two names, and the rows that each gives.
/// In every text '#' stands for the entry's number.
struct AreaCase {
    Check check;
    HKEY root;
    const char* area;
    const char* entry;  // the subkey that holds the value; empty: the area's key
    const char* name;
    const char* text;
    const char* shownName;
    const char* shownText;
    int rows;
    bool timed;
};

void DemandRowsAndProgress(const AreaCase& planted);
void DemandNothingWithoutAccess(const AreaCase& planted);
void DemandClosedEntryPassedOver(const AreaCase& planted);
void DemandEndWhenCanceled(const AreaCase& planted);
void DemandEverythingClosed(const AreaCase& planted);
