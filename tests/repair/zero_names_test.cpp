#include <doctest/doctest.h>

#include "registry/key_link.h"
#include "repair/key_deletion.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"
#include "tests/support/registry_tree.h"

// The documented calls cut a key's name at its first zero byte. Where it is the first byte, what is left
// names the key above.

namespace {

struct ZeroBench {
    ZeroBench() {
        SetText(scratch.Add("unit"), "v", "x");
        SetText(scratch.Add("unit\\below"), "v", "x");
        hidden = CreateKeyByCountedName(scratch.Add("unit"), std::wstring(L"\0x", 2));
        REQUIRE(hidden);
    }
    ~ZeroBench() { DeleteOpenKey(hidden.Get()); }

    CScratchKey scratch;
    CUniqueKey hidden;
};

}  // namespace

TEST_CASE("a subkey without a name is left out of an export") {
    ZeroBench bench;
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\undo.reg";
    CUndoRecord undo(file);
    const std::string unit = bench.scratch.Path().substr(1) + "\\unit";
    CHECK(undo.Export(unit, ExportedLink::Itself) == 0);
    CHECK(FileText(file) == "Windows Registry Editor Version 5.00\r\n\r\n[" + unit +
                                "]\r\n\"v\"=\"x\"\r\n\r\n[" + unit + "\\below]\r\n\"v\"=\"x\"\r\n\r\n");
}

TEST_CASE("a key with a subkey without a name is not deleted, and nothing beside it either") {
    ZeroBench bench;
    SetText(bench.scratch.Add("beside"), "v", "x");
    CHECK(DeleteBelow(bench.scratch, "unit") != ERROR_SUCCESS);
    CHECK(ExistsBelow(bench.scratch, "unit"));
    CHECK(ExistsBelow(bench.scratch, "beside"));
}

TEST_CASE("a deletion without a name deletes nothing") {
    CScratchKey scratch;
    scratch.Add("a");
    const Tree before = ReadTree(scratch.Get());
    CHECK(DeleteBelow(scratch, "") != ERROR_SUCCESS);
    CHECK(DeleteKeyItself(scratch.Add("a"), "") != ERROR_SUCCESS);
    CHECK(Difference(before, ReadTree(scratch.Get())) == "");
}

TEST_CASE("an entry whose key has no name takes no key above it away") {
    CScratchKey scratch;
    SetText(scratch.Add("a"), "v", "x");
    const Tree before = ReadTree(scratch.Get());
    CRepairBench bench;
    (void)bench.Repair(scratch.Path() + "\\");
    (void)bench.Repair(scratch.Path() + "\\a\\");
    Tree after = ReadTree(scratch.Get());
    after.values.erase("");  // an entry of no kind has its default value emptied
    after.subkeys["a"].values.erase("");
    CHECK(Difference(before, after) == "");
}
