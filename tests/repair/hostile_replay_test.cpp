#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "repair/undo_companion.h"
#include "repair/undo_record.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/registry_tree.h"

namespace {

constexpr char kForeign[] = R"(Software\VellumorForeign)";
constexpr int kRounds = 48;

int Below(std::mt19937& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

/// A text of pieces that mean something to a reader of exports.
std::string HostileText(std::mt19937& random, bool isKeyName) {
    static constexpr const char* kPieces[] = {"a",
                                              "b",
                                              "]",
                                              "\n",
                                              "\r",
                                              "\r\n",
                                              "]\n\n[HKEY_CURRENT_USER",
                                              "\n[HKEY_CURRENT_USER",
                                              "\"",
                                              "@=",
                                              "=",
                                              "-",
                                              ";",
                                              " ",
                                              "\n@=-",
                                              "\"=\"",
                                              "dword:00000001",
                                              "hex:41",
                                              "\\",
                                              "\n[HKEY_CURRENT_USER\\Software\\VellumorForeign]\n"};
    std::string text;
    for (int count = 1 + Below(random, 4); count > 0; --count)
        text += kPieces[Below(random, static_cast<int>(std::size(kPieces)))];
    if (!isKeyName) return text;
    std::ranges::replace(text, '\\', '/');
    return Below(random, 2) == 0 ? text : text + "]\n[HKEY_CURRENT_USER";
}

std::string PlainText(std::mt19937& random) {
    return std::string(1 + static_cast<std::size_t>(Below(random, 6)), 'n') + "[" + std::to_string(random()) +
           "]";
}

void PlantValues(HKEY key, std::mt19937& random, int oneHostileIn) {
    for (int count = Below(random, 4); count > 0; --count) {
        const bool isHostile = Below(random, oneHostileIn) == 0;
        SetText(key, isHostile ? HostileText(random, false) : PlainText(random),
                Below(random, oneHostileIn) == 0 ? HostileText(random, false) : "one\ntwo\r\n");
    }
}

/// Fills a key with subkeys, some of whose paths spell a foreign key.
void PlantHostileTree(CScratchKey& scratch, HKEY key, std::mt19937& random, int oneHostileIn) {
    PlantValues(key, random, oneHostileIn);
    for (int count = 1 + Below(random, 3); count > 0; --count) {
        const bool isHostile = Below(random, oneHostileIn) == 0;
        const HKEY subkey = scratch.Add(key, isHostile ? HostileText(random, true) : PlainText(random));
        PlantValues(subkey, random, oneHostileIn);
        PlantValues(scratch.Add(scratch.Add(subkey, "Software"), "VellumorForeign"), random, oneHostileIn);
    }
}

bool ForeignKeyExists() { return KeyExists(HKEY_CURRENT_USER, kForeign); }

void DeleteForeignKey() {
    CUniqueKey key;
    if (::RegOpenKeyExA(HKEY_CURRENT_USER, kForeign, 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS)
        CScratchKey::DeleteTree(key.Get());
}

struct Outcome {
    bool mayReplay;
    bool hasForeignKey;  // once the editor has replayed the file, whether or not it may be
};

/// Exports a hostile tree, and lets the editor replay it.
Outcome Replay(unsigned seed) {
    std::mt19937 random(seed);
    CScratchKey scratch;
    const CScratchFolder folder;
    SetText(scratch.Add("beside"), "v", "x");
    PlantHostileTree(scratch, scratch.Add("unit"), random, 3 + static_cast<int>(seed % 20));
    CUndoRecord undo(folder.Path() + "\\undo.reg");
    CHECK(undo.Export(scratch.Path().substr(1) + "\\unit", ExportedLink::Followed) == 0);
    Tree before = ReadTree(scratch.Get());
    ReplayByEditor(undo.FileName());
    Tree after = ReadTree(scratch.Get());
    before.subkeys.erase("unit");
    after.subkeys.erase("unit");
    const Outcome outcome{MayReplay(undo.FileName()), ForeignKeyExists()};
    if (outcome.mayReplay) CHECK(Difference(before, after) == "");
    DeleteForeignKey();
    return outcome;
}

}  // namespace

TEST_CASE("a key name that spells a foreign key has one made by the editor, and may not be replayed") {
    CScratchKey scratch;
    const CScratchFolder folder;
    const HKEY unit = scratch.Add("unit");
    const HKEY foreign =
        scratch.Add(scratch.Add(scratch.Add(unit, "]\n[HKEY_CURRENT_USER"), "Software"), "VellumorForeign");
    SetText(foreign, "v", "x");
    CUndoRecord undo(folder.Path() + "\\undo.reg");
    CHECK(undo.Export(scratch.Path().substr(1) + "\\unit", ExportedLink::Followed) == 0);
    CHECK_FALSE(MayReplay(undo.FileName()));
    REQUIRE_FALSE(ForeignKeyExists());
    ReplayByEditor(undo.FileName());
    CHECK(ValueExists(HKEY_CURRENT_USER, kForeign, "v"));
    DeleteForeignKey();
}

TEST_CASE("of hostile trees, those that may be replayed change nothing outside of their branch") {
    REQUIRE_FALSE(ForeignKeyExists());
    int replayed = 0;
    int foreign = 0;
    for (unsigned seed = 1; seed <= kRounds; ++seed) {
        CAPTURE(seed);
        const Outcome outcome = Replay(seed);
        CHECK_FALSE((outcome.mayReplay && outcome.hasForeignKey));
        replayed += outcome.mayReplay ? 1 : 0;
        foreign += outcome.hasForeignKey ? 1 : 0;
    }
    MESSAGE("may be replayed: ", replayed, ", would make a foreign key: ", foreign, ", of ", kRounds);
    CHECK(replayed > kRounds / 8);
    CHECK(foreign > kRounds / 16);
}
