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

TEST_CASE("a value whose name holds a zero is left out of an export, for a replay would change another one") {
    CScratchKey scratch;
    SetText(scratch.Get(), "v", "good");
    REQUIRE(SetTextByCountedName(scratch.Get(), std::wstring(L"v\0x", 3), L"bad"));
    REQUIRE(SetTextByCountedName(scratch.Get(), std::wstring(L"\0x", 2), L"bad"));
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\undo.reg";
    CHECK(CRegFile().ExportKey(file.c_str(), scratch.Path().substr(1).c_str()) == 0);
    CHECK(FileText(file) == "Windows Registry Editor Version 5.00\r\n\r\n[" + scratch.Path().substr(1) +
                                "]\r\n\"v\"=\"good\"\r\n\r\n");
}

TEST_CASE("a value is not deleted when another one has its name in the code page, too") {
    CScratchKey scratch;
    SetText(scratch.Get(), "vA", "good");
    SetText(scratch.Get(), "w", "x");
    REQUIRE(SetTextByCountedName(scratch.Get(), L"v\xFF21", L"C:\\gone"));
    CRepairBench bench;
    CHECK_FALSE(static_cast<bool>(bench.Repair(scratch.Path() + "\\\"vA\"")));
    CHECK(static_cast<bool>(bench.Repair(scratch.Path() + "\\\"w\"")));
    CHECK(ReadTree(scratch.Get()).values.contains("vA"));
}

TEST_CASE("a key that no name leads to does not hold a deletion up") {
    CScratchKey scratch;
    scratch.Add("unit\\a");
    const CUniqueKey twin = CreateKeyByCountedName(scratch.Add("unit"), L"\xFF41");
    REQUIRE(static_cast<bool>(twin));
    const DWORD start = ::GetTickCount();
    CHECK(DeleteBelow(scratch, "unit") == ERROR_INVALID_NAME);
    CHECK(::GetTickCount() - start < 5'000);
    CHECK(DeleteOpenKey(twin.Get()));
}
