#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "repair/entry_rules.h"
#include "repair/repair_entry.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/path_names.h"
#include "tests/support/registry_tree.h"

// Rows of random keys and values are cleaned, and the registry is compared as a whole. What a row may touch
// is told here in its own words: its value, its key, or the key of the class that it belongs to.

namespace {

constexpr int kTrees = 30;
constexpr int kRowsPerTree = 24;

int Below(std::mt19937& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

/// Names that the kinds of repair look for, and some that only resemble them. None begins with a double
/// quote: behind a backslash, that opens the value name of an entry's text.
std::string RandomName(std::mt19937& random) {
    static constexpr const char* kNames[] = {"Classes",
                                             "CLSID",
                                             "TypeLib",
                                             "Interface",
                                             "{01234567-89AB-CDEF-0123-456789ABCDEF}",
                                             "{11234567-89AB-CDEF-0123-456789ABCDEF}",
                                             "{short}",
                                             "DefaultIcon",
                                             "defaulticon",
                                             "shell",
                                             "Shell",
                                             "shellx",
                                             "open",
                                             "command",
                                             "Command",
                                             "commandx",
                                             "Microsoft",
                                             "Windows",
                                             "CurrentVersion",
                                             "App Paths",
                                             "Installer",
                                             "UserData",
                                             "Components",
                                             "Services",
                                             "Eventlog",
                                             "Application",
                                             "Uninstall",
                                             "a",
                                             "b",
                                             "x Classes",
                                             "x\"q\"",
                                             "%p%",
                                             "]",
                                             "*",
                                             "a\nb",
                                             "\xE4"};
    return kNames[Below(random, static_cast<int>(std::size(kNames)))];
}

/// Paths on which the kinds of repair find what they look for.
std::string RandomPath(std::mt19937& random) {
    static constexpr const char* kPaths[] = {
        R"(Classes\CLSID\{01234567-89AB-CDEF-0123-456789ABCDEF}\InprocServer32)",
        R"(Classes\TypeLib\{01234567-89AB-CDEF-0123-456789ABCDEF}\1.0\0\win32)",
        R"(Classes\txtfile\DefaultIcon)",
        R"(Classes\txtfile\shell\open\command)",
        R"(Microsoft\Windows\CurrentVersion\Installer\UserData\S-1\Components\a)",
        R"(Microsoft\Windows\CurrentVersion\App Paths\a.exe)",
        R"(Services\Eventlog\Application\a)"};
    std::string path;
    for (int count = Below(random, 3); count > 0; --count) path += RandomName(random) + "\\";
    if (Below(random, 2) == 0)
        path += std::string(kPaths[Below(random, static_cast<int>(std::size(kPaths)))]) + "\\";
    return path + RandomName(random);
}

/// The keys that may go with an entry: its own, and the class key that it is about.
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

/// The machine's and the user's registry, without a test's own keys.
Tree ReadSurroundings() {
    Tree all;
    all.subkeys["machine"] = ReadTree(HKEY_LOCAL_MACHINE);
    all.subkeys["user"] = ReadTree(HKEY_CURRENT_USER);
    for (auto& [name, root] : all.subkeys)
        std::erase_if(root.subkeys["Software"].subkeys,
                      [](const auto& key) { return key.first.starts_with("VellumorTest-"); });
    return all;
}

/// A scratch key full of random keys, and rows of them that are cleaned.
class CUnitBench {
public:
    CUnitBench(HKEY root, std::mt19937& random) : m_scratch(root), m_random(random) {
        for (int count = 0; count < 14; ++count) {
            const HKEY key = m_scratch.Add(RandomPath(m_random));
            for (const char* name : {"", "v", "w"})
                if (Below(m_random, 2) == 0) SetText(key, name, "C:\\gone");
        }
    }

    /// Cleans one row. @return whether anything has changed.
    bool CleanOne() {
        const Tree before = ReadTree(m_scratch.Get());
        const std::string path = ChooseKey(before, m_random);
        if (path.empty()) return false;
        const std::string valueName = Below(m_random, 2) == 0 ? "v" : "";
        CAPTURE(path);
        CAPTURE(valueName);
        const Repair repair = RepairEntry(EntryText(m_scratch.Path() + "\\" + path, valueName), m_undo);
        const Tree after = ReadTree(m_scratch.Get());
        CheckChange(before, after, path, valueName);
        if (after != before) CHECK(static_cast<bool>(repair));
        return after != before;
    }

private:
    static void CheckChange(const Tree& before, const Tree& after, const std::string& path,
                            const std::string& valueName) {
        if (after == before) return;
        bool isAllowed = after == WithoutValue(before, path, valueName);
        for (const std::string& unit : PossibleUnits(NamesOf(path)))
            isAllowed = isAllowed || after == Without(before, unit);
        CHECK(isAllowed);
    }

    CScratchKey m_scratch;
    CScratchFolder m_folder;
    CUndoRecord m_undo{m_folder.Path() + "\\undo.reg"};
    std::mt19937& m_random;
};

}  // namespace

TEST_CASE("cleaning a row of a random registry touches nothing outside of the row's unit") {
    const Tree before = ReadSurroundings();
    int changed = 0;
    int rows = 0;
    for (unsigned seed = 1; seed <= kTrees; ++seed) {
        CAPTURE(seed);
        std::mt19937 random(seed);
        CUnitBench bench(seed % 2 == 0 ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, random);
        for (int row = 0; row < kRowsPerTree; ++row, ++rows) changed += bench.CleanOne() ? 1 : 0;
    }
    CHECK(Difference(before, ReadSurroundings()) == "");
    MESSAGE(changed, " of ", rows, " rows changed something");
    CHECK(changed > rows / 3);
}
