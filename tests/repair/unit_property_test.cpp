#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>

#include "repair/entry_rules.h"
#include "repair/kind_repairs.h"
#include "repair/repair_entry.h"
#include "tests/repair/random_places.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/path_names.h"
#include "tests/support/registry_tree.h"

// Rows of random keys and values are cleaned, and the registry is compared as a whole. What a row may touch
// is told here in its own words: its value, its key, or the key of the class that it belongs to.

namespace {

constexpr int kTrees = 44;
constexpr int kRowsPerTree = 24;

/// The kinds by their names, to tell which of them took part.
struct NamedKind {
    const char* name;
    KindRepair repair;
};
constexpr NamedKind kKinds[] = {{"class", RepairClsidKey},
                                {"type library", RepairTypeLibKey},
                                {"icon", RepairDefaultIconClass},
                                {"command", RepairShellCommandClass},
                                {"component", RepairInstallerComponent},
                                {"application path", RepairAppPath},
                                {"event source", RepairEventlogSource},
                                {"product", RepairUninstallKey},
                                {"menu order", RepairMenuOrderKey},
                                {"list of programs", RepairArpCacheKey},
                                {"software", RepairSoftwareKey},
                                {"COM family", RepairComFamilyKey},
                                {"extension", RepairFileExtsKey},
                                {"recent documents", RepairRecentDocsKey}};

/// How often each kind has removed a unit.
using KindCounts = std::map<KindRepair, int>;

/// The keys that may go with an entry: its own, which of a product is the product's, and the class key that
/// it is about.
/// @param names  of the entry's key, from its root on.
std::vector<std::string> PossibleUnits(const Names& names) {
    std::vector<std::string> units{PathOf(names, names.size())};
    const auto isOneOf = [&](std::size_t at, std::initializer_list<std::string_view> wanted) {
        return at < names.size() && std::ranges::find(wanted, names[at]) != wanted.end();
    };
    for (std::size_t classes = 0; classes < names.size(); ++classes) {
        if (!names[classes].ends_with("Classes")) continue;
        if (isOneOf(classes + 1, {"CLSID", "TypeLib"}) && classes + 2 < names.size() &&
            names[classes + 2].starts_with('{') && names[classes + 2].size() == 38)
            units.push_back(PathOf(names, classes + 3));
        for (std::size_t inside = classes + 2; inside < names.size(); ++inside)
            if (isOneOf(inside, {"DefaultIcon", "shell", "Shell"})) units.push_back(PathOf(names, inside));
    }
    return units;
}

Tree* Find(Tree& tree, const Names& names, std::size_t count) {
    Tree* key = &tree;
    for (std::size_t index = 0; index < count; ++index) {
        const auto found = key->subkeys.find(names[index]);
        if (found == key->subkeys.end()) return nullptr;
        key = &found->second;
    }
    return key;
}

/// What a tree becomes when a key is gone.
Tree Without(Tree tree, const std::string& path) {
    const Names names = NamesOf(path);
    if (Tree* const parent = Find(tree, names, names.size() - 1)) parent->subkeys.erase(names.back());
    return tree;
}

/// What a tree becomes when a value is gone, or, where it has no name, its text is.
Tree WithoutValue(Tree tree, const std::string& path, const std::string& name) {
    const Names names = NamesOf(path);
    Tree* const key = Find(tree, names, names.size());
    REQUIRE(key != nullptr);
    key->values.erase(name);
    if (name.empty()) key->values[""] = {REG_SZ, ""};
    return tree;
}

/// One of a tree's keys, chosen by going down at random.
std::string ChooseKey(const Tree& tree, std::mt19937& random) {
    std::string path;
    const Tree* key = &tree;
    while (!key->subkeys.empty() && (path.empty() || Below(random, 5) != 0)) {
        const auto next =
            std::next(key->subkeys.begin(), Below(random, static_cast<int>(key->subkeys.size())));
        path += (path.empty() ? "" : "\\") + next->first;
        key = &next->second;
    }
    return path;
}

/// The registry of the machine and of all users.
Tree ReadSurroundings() {
    Tree all;
    all.subkeys["machine"] = ReadTree(HKEY_LOCAL_MACHINE);
    all.subkeys["users"] = ReadTree(HKEY_USERS);
    return all;
}

/// Keys of a place full of random keys, and rows of them that are cleaned.
class CUnitBench {
public:
    CUnitBench(const Place& place, std::mt19937& random)
        : m_place(place), m_root(RootNamed(place.rootName)), m_random(random) {
        for (const char* top : kTops) m_tops.push_back(std::make_unique<CScratchKey>(m_root, PathBelow(top)));
        for (int count = 0; count < 16; ++count) {
            CScratchKey& top = *m_tops[static_cast<std::size_t>(Below(m_random, std::size(kTops)))];
            // A product's key goes only where it has no subkeys.
            PlantValues(Below(m_random, 4) == 0 ? top.Get() : top.Add(RandomPath(m_random)));
        }
    }

    /// Cleans one row. @return whether anything has changed.
    bool CleanOne(KindCounts& removals) {
        const Tree before = ReadTops();
        const std::string path = ChooseKey(before, m_random);
        if (path.empty()) return false;
        const std::string valueName = Below(m_random, 2) == 0 ? "v" : "";
        const std::string keyText = m_place.rootName + ("\\" + PathBelow(path));
        CAPTURE(keyText);
        CAPTURE(valueName);
        const Repair repair = RepairEntry(EntryText("\\" + keyText, valueName), m_undo);
        const Tree after = ReadTops();
        CheckChange(before, after, path, valueName);
        if (after != before) CHECK(static_cast<bool>(repair));
        if (repair.deed == Repair::Deed::KeyRemoved) Count(path, valueName, repair.key, removals);
        return after != before;
    }

private:
    [[nodiscard]] std::string PathBelow(const std::string& path) const {
        return std::string(m_place.path) + "\\" + path;
    }

    void PlantValues(HKEY key) {
        for (const char* name : {"", "v", "w"})
            if (Below(m_random, 2) == 0) SetText(key, name, "C:\\gone");
    }

    [[nodiscard]] Tree ReadTops() const {
        Tree tops;
        for (const char* top : kTops) {
            CUniqueKey key;
            if (::RegOpenKeyExA(m_root, PathBelow(top).c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS)
                tops.subkeys[top] = ReadTree(key.Get());
        }
        return tops;
    }

    void CheckChange(const Tree& before, const Tree& after, const std::string& path,
                     const std::string& valueName) const {
        if (after == before) return;
        bool isAllowed = after == WithoutValue(before, path, valueName);
        for (const std::string& unit : PossibleUnits(NamesOf(PathBelow(path)))) {
            if (!unit.starts_with(PathBelow(""))) continue;
            isAllowed = isAllowed || after == Without(before, unit.substr(PathBelow("").size()));
        }
        CHECK(isAllowed);
    }

    /// The kinds that are tried for a row, in their order.
    [[nodiscard]] std::vector<RepairKind> KindsFor(const std::string& valueName) const {
        std::vector<RepairKind> kinds;
        const auto add = [&](std::span<const RepairKind> more) {
            for (const RepairKind& kind : more) kinds.push_back(kind);
        };
        if (!valueName.empty()) {
            add(ValueEntryRepairs());
            return kinds;
        }
        if (m_root == HKEY_CLASSES_ROOT) add(ClassesRootKeyRepairs());
        if (m_root == HKEY_CURRENT_USER) add(CurrentUserKeyRepairs());
        add(KeyEntryRepairs());
        return kinds;
    }

    /// Counts a removal for the first kind that removes the key.
    void Count(const std::string& path, const std::string& valueName, const std::string& removed,
               KindCounts& removals) const {
        const std::string subkeyPath = PathBelow(path);
        const std::string root = std::string("\\") + m_place.rootName + "\\";
        const std::vector<RepairKind> kinds = KindsFor(valueName);
        const auto found = std::ranges::find_if(kinds, [&](const RepairKind& kind) {
            const Unit unit = kind.unit({m_place.rootName, subkeyPath});
            return unit.has_value() && root + *unit == removed;
        });
        CHECK(found != kinds.end());
        if (found != kinds.end()) ++removals[found->repair];
    }

    Place m_place;
    HKEY m_root;
    std::vector<std::unique_ptr<CScratchKey>> m_tops;
    CScratchFolder m_folder;
    CUndoRecord m_undo{m_folder.Path() + "\\undo.reg"};
    std::mt19937& m_random;
};

}  // namespace

TEST_CASE("cleaning a row of a random registry touches nothing outside of the row's unit") {
    MakePlaces();
    const Tree before = ReadSurroundings();
    KindCounts removals;
    int changed = 0;
    int rows = 0;
    for (unsigned seed = 1; seed <= kTrees; ++seed) {
        CAPTURE(seed);
        std::mt19937 random(seed);
        CUnitBench bench(PlaceOf(seed), random);
        for (int row = 0; row < kRowsPerTree; ++row, ++rows) changed += bench.CleanOne(removals) ? 1 : 0;
    }
    CHECK(Difference(before, ReadSurroundings()) == "");
    MESSAGE(changed, " of ", rows, " rows changed something");
    CHECK(changed > rows / 3);
    for (const NamedKind& kind : kKinds) {
        MESSAGE(std::string(kind.name), ": ", removals[kind.repair]);
        CHECK(removals[kind.repair] > 0);
    }
}
