#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/hostile/list_places.h"
#include "tests/hostile/raw_registry.h"

/// What each planted name or datum carries, so that it can be told from the machine's own.
inline constexpr wchar_t kWideMark[] = L"VmHost";
inline constexpr char kMark[] = "VmHost";

/// UTF-16 as it lies in the registry, without a terminator.
[[nodiscard]] std::string Bytes(const std::wstring& text);
/// A text with its terminator.
[[nodiscard]] RawValue TextValue(const std::wstring& name, const std::wstring& text);

/// Plants hostile things into every list that a check reads. All of it, and what a replay made of it, is
/// removed at the end.
class CHostileRegistry {
public:
    CHostileRegistry();
    CHostileRegistry(const CHostileRegistry&) = delete;
    CHostileRegistry& operator=(const CHostileRegistry&) = delete;
    ~CHostileRegistry();

    /// Opens a list's key, which is made if need be.
    [[nodiscard]] HKEY Area(HKEY root, const std::wstring& path);
    /// Plants a subkey into a list, with a value where the list's check looks.
    void PlantSubkey(const SubkeyList& list, const std::wstring& name, RawValue value);
    /// Makes a key below another; for as long as this lives it stays open.
    HKEY AddKey(HKEY parent, const std::wstring& name);
    void AddLink(HKEY parent, const std::wstring& name, const std::wstring& target);
    void SetValue(HKEY key, const RawValue& value);
    /// Lets everybody open a key for these rights only; 0: the access list is empty.
    void Restrict(CUniqueKey key, REGSAM rights);

    /// Opens every list.
    void OpenAreas();
    /// Removes what has been planted into the lists that were opened.
    void Remove();

    /// How many keys and values have been planted.
    [[nodiscard]] int Count() const { return m_count; }

private:
    void RemoveMarked(HKEY area);

    std::vector<std::pair<std::wstring, CUniqueKey>> m_areas;
    std::vector<CUniqueKey> m_keys;
    std::vector<CUniqueKey> m_restricted;
    int m_count = 0;
};

// The families of hostile things.

/// Names up to the longest, with zeros, quotes, brackets, percent signs, prefixes of devices, characters that
/// the code page lacks or takes for a backslash. None has line breaks.
void PlantNames(CHostileRegistry& registry);
/// Names of keys and values, and texts, with line breaks.
void PlantLineBreaks(CHostileRegistry& registry);
/// Data of hard sizes and of every type, texts without an end, of odd length, of every byte.
void PlantData(CHostileRegistry& registry);
/// Texts that name devices, pipes, streams, network paths and variables.
void PlantReferences(CHostileRegistry& registry);
/// Deep trees, and trees of which each level can be reached by several names.
void PlantTrees(CHostileRegistry& registry);
/// Links to themselves, to each other, to keys above them, to nothing.
void PlantLinks(CHostileRegistry& registry);
/// Keys that refuse reading, writing or both.
void PlantRights(CHostileRegistry& registry);

struct HostileFamily {
    const char* name;
    void (*plant)(CHostileRegistry& registry);
};
[[nodiscard]] std::vector<HostileFamily> HostileFamilies();
