#include <doctest/doctest.h>

#include "registry/registry_access.h"
#include "tests/support/scratch_key.h"
#include "tests/ui/shell.h"
#include "tests/ui/undo_bench.h"

namespace {

constexpr UINT kClean = 32807;
constexpr int kDelete = UndoBench::kDelete;

struct CompanionBench : UndoBench {
    /// Undoes the only undo file.
    void UndoFile() {
        reply = IDYES;
        Show([&] {
            CHECK(Rows() == 1);
            Check({0});
            Press(IDOK);
        });
    }
};

}  // namespace

TEST_CASE(
    "an undo file is replayed when its companion lists what it holds, and else passed over in silence") {
    const std::string text =
        "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\a\\b]\r\n\"v\"=\"x\"\r\n\r\n";
    for (const char* branch : {"HKEY_CURRENT_USER\\a", "HKEY_CURRENT_USER\\c"}) {
        CompanionBench bench;
        bench.undo.AddFile("2009.05.11.16.03.27.reg", text);
        bench.undo.AddFile("2009.05.11.16.03.27.branches", std::string(branch) + "\r\n");
        bench.UndoFile();
        const bool isListed = std::string(branch).ends_with('a');
        CHECK(bench.actions.asked.size() == (isListed ? 1 : 0));
        CHECK(bench.actions.messages.size() == (isListed ? 2 : 1));
        CHECK(bench.undo.Files().size() == 2);
    }
}

TEST_CASE("Delete takes each undo file's companion along, and leaves one whose file stays") {
    CompanionBench bench;
    for (const char* day : {"11", "12", "13", "14"})
        bench.undo.AddFile("2009.05." + std::string(day) + ".16.03.27.branches");
    for (const char* day : {"11", "12", "13"})
        bench.undo.AddFile("2009.05." + std::string(day) + ".16.03.27.reg");
    bench.reply = IDYES;
    const HANDLE lock = ::CreateFileA((bench.undo.Path() + "\\2009.05.11.16.03.27.reg").c_str(), GENERIC_READ,
                                      0, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(lock != INVALID_HANDLE_VALUE);
    bench.Show([&] {
        CHECK(bench.Rows() == 3);  // a companion alone is no undo file
        bench.Check({0, 1});
        bench.Press(kDelete);
    });
    ::CloseHandle(lock);
    CHECK(bench.undo.Files() ==
          std::vector<std::string>{"2009.05.11.16.03.27.branches", "2009.05.11.16.03.27.reg",
                                   "2009.05.13.16.03.27.branches", "2009.05.13.16.03.27.reg",
                                   "2009.05.14.16.03.27.branches"});
}

TEST_CASE("what one command cleans is undone, unless a name reads back as a foreign key") {
    for (const std::string name : {"plain", "]\n[HKEY_LOCAL_MACHINE", "]\n\n[HKEY_LOCAL_MACHINE"}) {
        CompanionBench bench;
        CScratchKey scratch;
        const HKEY unit = scratch.Add("unit");
        SetText(unit, "lines", "one\ntwo\r\n");
        scratch.Add(scratch.Add(unit, name), "SOFTWARE");
        bench.shell.SendRow((scratch.Path() + "\\unit").c_str(), "2009/03/05 07:08:09", "lines", "one");
        bench.shell.View().SetCheck(0, true);
        bench.shell.Command(kClean);
        REQUIRE(bench.undo.Files().size() == 2);
        bench.actions.messages.clear();
        bench.UndoFile();
        CHECK(bench.actions.asked.size() == (name == "plain" ? 1 : 0));
        CHECK(bench.actions.messages.size() == (name == "plain" ? 2 : 1));
    }
}
