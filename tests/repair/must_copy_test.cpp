#include <doctest/doctest.h>

#include <optional>

#include "repair/repair_entry.h"
#include "repair/undo_companion.h"
#include "repair/undo_files.h"
#include "repair/undo_name_rules.h"
#include "tests/repair/refused_companion.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/planted_hives.h"
#include "tests/support/program_files.h"
#include "tests/support/registry_tree.h"

// Repairs that must have their copy, and the undo files of commands that make such repairs.

namespace {

/// How many writes go through before one fails.
int g_writesLeft = 0;
bool g_tellsOfFailure = true;
decltype(&::WriteFile) g_write = nullptr;

BOOL WINAPI WriteInPart(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED overlapped) {
    if (g_writesLeft-- > 0) return g_write(file, bytes, count, written, overlapped);
    const BOOL isWritten = g_write(file, bytes, count / 2, written, overlapped);
    return g_tellsOfFailure ? FALSE : isWritten;
}

/// Writes fail while it lives, as on a disk that is full.
class CFullDisk {
public:
    CFullDisk(int writes, bool tellsOfFailure) {
        g_writesLeft = writes;
        g_tellsOfFailure = tellsOfFailure;
    }

private:
    CCallHook m_hook{"WriteFile", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&WriteInPart)),
                     reinterpret_cast<FARPROC*>(&g_write)};
};

/// A key with two values, whose export takes several writes, and an undo file that has a copy in it.
struct CopyBench {
    CopyBench() {
        SetText(scratch.Get(), "small", "x");
        for (int value = 0; value < 20; ++value)
            SetText(scratch.Add("large"), "value" + std::to_string(value), std::string(1000, 'x'));
        CHECK(RepairEntry(scratch.Path() + "\\\"small\"", undo).deed == Repair::Deed::ValueDeleted);
        before = Text();
        REQUIRE(before.find("small") != std::string::npos);
    }
    [[nodiscard]] std::string Text() const { return FileText(undo.FileName()); }
    [[nodiscard]] Repair RepairLarge() { return RepairEntry(scratch.Path() + "\\large\\\"value3\"", undo); }

    CScratchKey scratch;
    CScratchFolder folder;
    CUndoRecord undo{folder.Path() + "\\undo.reg", CUndoRecord::WithoutCopy::IsRefused};
    std::string before;
};

bool IsThere(const CScratchKey& scratch) {
    CUniqueKey key;
    return ::RegOpenKeyA(scratch.Get(), "large", key.Receive()) == ERROR_SUCCESS &&
           ::RegQueryValueExA(key.Get(), "value3", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

/// The clock stands still while it lives, so that names made of the time are the same.
class CStoppedClock {
    static void WINAPI Tell(LPSYSTEMTIME now) { *now = {2009, 5, 4, 14, 16, 3, 27, 0}; }

    CCallHook m_hook{"GetLocalTime", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Tell))};
};

}  // namespace

TEST_CASE("a repair that must have its copy is left when the disk is full, and the file is as it was") {
    for (const bool tellsOfFailure : {true, false})
        for (const int writes : {0, 1, 3}) {
            CAPTURE(tellsOfFailure);
            CAPTURE(writes);
            CopyBench bench;
            {
                const CFullDisk full(writes, tellsOfFailure);
                CHECK_FALSE(bench.RepairLarge());
            }
            CHECK(bench.undo.HasFailed());
            CHECK(IsThere(bench.scratch));
            CHECK(bench.Text() == bench.before);
        }
}

TEST_CASE("a repair that must have its copy is left while somebody else holds the undo file") {
    CopyBench bench;
    const CUniqueFile held(::CreateFileA(bench.undo.FileName().c_str(), GENERIC_READ, 0, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    REQUIRE(held);
    CHECK_FALSE(bench.RepairLarge());
    CHECK(bench.undo.HasFailed());
    CHECK(IsThere(bench.scratch));
}

TEST_CASE(
    "a repair that must have its copy is left when its branch cannot be listed, and the file is as it was") {
    CopyBench bench;
    {
        const CRefusedCompanion refused;
        CHECK_FALSE(bench.RepairLarge());
    }
    CHECK(bench.undo.HasFailed());
    CHECK(IsThere(bench.scratch));
    CHECK(bench.Text() == bench.before);
    CHECK(MayReplay(bench.undo.FileName()));
}

TEST_CASE("nothing is exported when the key of an emptied default value behind it cannot be listed") {
    CopyBench bench;
    const HKEY large = bench.scratch.Add("large");
    SetText(large, "", "default");
    REQUIRE(bench.undo.RememberDefault(large, bench.scratch.Path().substr(1) + "\\LARGE"));
    {
        const CRefusedCompanion refused(CRefusedCompanion::kAlways, 1);
        CHECK_FALSE(bench.RepairLarge());
    }
    CHECK(bench.undo.HasFailed());
    CHECK(IsThere(bench.scratch));
    CHECK(bench.Text() == bench.before);
}

TEST_CASE("a key that must have its copy is not deleted without one, and its default value not emptied") {
    CPlantedUnit unit("HKEY_CLASSES_ROOT", R"(CLSID\{20090514-0000-0000-0000-000000000001})");
    CScratchKey scratch;
    SetText(scratch.Get(), "", "default");
    const CScratchFolder folder;
    const CFullDisk full(0, true);
    for (const std::string& entry : {"\\" + unit.KeyText(), scratch.Path()}) {
        CUndoRecord undo(folder.Path() + "\\undo.reg", CUndoRecord::WithoutCopy::IsRefused);
        CHECK_FALSE(RepairEntry(entry, undo));
        CHECK(undo.HasFailed());
    }
    CHECK(unit.Exists());
    DWORD bytes = 0;
    CHECK(::RegQueryValueExA(scratch.Get(), "", nullptr, nullptr, nullptr, &bytes) == ERROR_SUCCESS);
    CHECK(bytes == 8);
}

TEST_CASE("a row whose unit cannot be copied whole keeps its default value as well") {
    CScratchKey unit;
    SetText(unit.Get(), "", "default");
    unit.Restrict(unit.Add("locked"), 0);
    const CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.reg", CUndoRecord::WithoutCopy::IsRefused);
    CHECK_FALSE(RepairEntry(unit.Path(), undo));
    CHECK_FALSE(undo.HasFailed());
    CHECK(FileText(undo.FileName()).empty());
    CHECK(ReadTree(unit.Get()).values[""].data == "default");
}

TEST_CASE("a row whose unit cannot be read at all keeps its value") {
    CScratchKey cls(HKEY_CURRENT_CONFIG, R"(Software\Classes\CLSID\{20090514-0000-0000-0000-000000000001})");
    const HKEY inside = cls.Add("sub");
    SetText(inside, "v", "x");
    cls.Restrict(cls.Get(), 0);
    const CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.reg", CUndoRecord::WithoutCopy::IsRefused);
    CHECK_FALSE(RepairEntry(cls.Path() + R"(\sub\"v")", undo));
    CHECK(ReadTree(inside).values.contains("v"));
}

TEST_CASE("a row whose unit is not there goes on to the next kind though it must have a copy") {
    // The type library in its path makes it one of "TypeLib", where it is not.
    CScratchKey word(HKEY_CLASSES_ROOT, R"(CLSID\VellumorGone)");
    const HKEY entry = word.Add(R"(TypeLib\{gone)");
    SetText(entry, "", "default");
    const CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.reg", CUndoRecord::WithoutCopy::IsRefused);
    const Repair repair = RepairEntry(word.Path() + R"(\TypeLib\{gone)", undo);
    CHECK((repair.deed == Repair::Deed::DefaultEmptied));
    CHECK(ReadTree(entry).values[""].data.empty());
}

TEST_CASE("two commands within a second have undo files of their own") {
    const CProgramSubfolder undo("Undo");
    const std::optional<std::string> first = ClaimUndoFile();
    const std::optional<std::string> second = ClaimUndoFile();
    REQUIRE(first.has_value());
    REQUIRE(second.has_value());
    CHECK(*first != *second);
    CHECK(undo.Files().size() == 4);  // each with its companion
    CHECK(DropEmptyUndoFile(*first));
    CHECK(undo.Files().size() == 2);
}

TEST_CASE("an undo file with something in it is kept, one that is not there counts as gone") {
    const CProgramSubfolder undo("Undo");
    const std::optional<std::string> claimed = ClaimUndoFile();
    REQUIRE(claimed.has_value());
    CScratchKey scratch;
    CUndoRecord record(*claimed, CUndoRecord::WithoutCopy::IsRefused);
    CHECK(record.Export(scratch.Path().substr(1), ExportedLink::Itself) == ERROR_SUCCESS);
    CHECK_FALSE(DropEmptyUndoFile(*claimed));
    CHECK(undo.Files().size() == 2);
    CHECK(DropEmptyUndoFile(undo.Path() + "\\2009.01.01.00.00.00.reg"));
}

TEST_CASE("an undo file of its own cannot be had where its folder cannot be made") {
    const CProgramSubfolder undo("Undo");
    const CUniqueFile inItsPlace(::CreateFileA(undo.Path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                               FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    REQUIRE(inItsPlace);
    CHECK_FALSE(ClaimUndoFile().has_value());
}

TEST_CASE("an undo file of its own cannot be had without its companion") {
    const CProgramSubfolder undo("Undo");
    {
        const CRefusedCompanion refused;
        CHECK_FALSE(ClaimUndoFile().has_value());
    }
    CHECK(undo.Files().empty());
    CHECK(ClaimUndoFile().has_value());
}

TEST_CASE("nothing that comes into an undo file of its own is replayed before it is listed") {
    const CProgramSubfolder undo("Undo");
    const CStoppedClock clock;
    const std::optional<std::string> first = ClaimUndoFile();
    REQUIRE(first.has_value());
    WriteFileText(*first, "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_USERS\\x]\r\n\r\n");
    CHECK_FALSE(MayReplay(*first));
    WriteFileText(CompanionName(*first), "HKEY_USERS\\x\r\n");
    REQUIRE(MayReplay(*first));
    // What was listed for a file that is gone is not listed for the next one of that name.
    const std::string text = FileText(*first);
    ::DeleteFileA(first->c_str());
    REQUIRE(ClaimUndoFile() == first);
    WriteFileText(*first, text);
    CHECK_FALSE(MayReplay(*first));
}
