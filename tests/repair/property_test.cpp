#include <doctest/doctest.h>

#include <vector>

#include "repair/key_deletion.h"
#include "repair/reg_file.h"
#include "tests/repair/random_tree.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/registry_tree.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr int kBatches = 16;
constexpr int kTreesPerBatch = 300;  // one start of the editor costs as much as many trees

void Delete(const CScratchKey& scratch, const std::string& name) {
    CHECK(DeleteKeyRecursive({scratch.Get(), HKEY_CURRENT_USER, scratch.Subkey()}, name) == ERROR_SUCCESS);
}

void CheckBatch(unsigned seed) {
    CAPTURE(seed);
    std::mt19937 random(seed);
    CScratchKey scratch;
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\undo.reg";
    for (int index = 0; index < kTreesPerBatch; ++index)
        PlantRandomTree(scratch.Add(std::to_string(index)), random);
    const Tree before = ReadTree(scratch.Get());
    for (int index = 0; index < kTreesPerBatch; ++index) {
        const std::string name = std::to_string(index);
        CHECK(CRegFile().ExportKey(file.c_str(), (scratch.Path().substr(1) + "\\" + name).c_str()) == 0);
        Delete(scratch, name);
    }
    CHECK(ReadTree(scratch.Get()) == Tree{});
    ReplayByEditor(file);
    CHECK(Difference(before, ReadTree(scratch.Get())) == "");
    for (int index = 0; index < kTreesPerBatch; ++index) Delete(scratch, std::to_string(index));
}

}  // namespace

TEST_CASE("random trees that are exported, deleted and replayed come back as they were") {
    for (unsigned seed = 1; seed <= kBatches; ++seed) CheckBatch(seed);
}
