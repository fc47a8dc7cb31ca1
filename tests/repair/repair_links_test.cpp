#include <doctest/doctest.h>

#include "tests/repair/repair_bench.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

/// A branch that a link leads to.
struct LinkTarget {
    explicit LinkTarget(CScratchKey& scratch)
        : subkey(scratch.Subkey() + R"(\target)"), key(scratch.Add("target")) {
        SetText(key, "v", "x");
        SetText(scratch.Add(R"(target\sub)"), "w", "x");
    }
    [[nodiscard]] bool IsWhole() const {
        return ValueExists(HKEY_CURRENT_USER, subkey, "v") &&
               ValueExists(HKEY_CURRENT_USER, subkey + R"(\sub)", "w");
    }

    std::string subkey;
    HKEY key;
};

bool LinkExists(HKEY parent, const char* name) {
    CUniqueKey link;
    return ::RegOpenKeyExA(parent, name, REG_OPTION_OPEN_LINK, DELETE, link.Receive()) !=
           ERROR_FILE_NOT_FOUND;
}

}  // namespace

TEST_CASE("a unit that is a link goes by itself even when it refuses access") {
    CUniqueKey link;
    CScratchKey software;
    const LinkTarget target(software);
    link = MakeLink(software.Get(), "link", ObjectName(target.key));
    software.Restrict(link.Get(), 0);
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\link)"));
    CHECK_FALSE(LinkExists(software.Get(), "link"));
    CHECK(target.IsWhole());
    CHECK(bench.UndoText().find("SymbolicLinkValue") != std::string::npos);
    CHECK(bench.UndoText().find("\"v\"") == std::string::npos);
}

TEST_CASE("a link inside of a unit goes by itself even when it refuses access") {
    CUniqueKey link;
    CScratchKey software;
    const LinkTarget target(software);
    link = MakeLink(software.Add("unit"), "link", ObjectName(target.key));
    software.Add(R"(unit\z)");
    software.Restrict(link.Get(), 0);
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\unit)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\unit)"));
    CHECK(target.IsWhole());
    CHECK(bench.UndoText().find("\"v\"") == std::string::npos);
}

TEST_CASE("a unit that is a link to a key that is gone goes too") {
    CScratchKey software;
    software.AddLink("link", ObjectName(software.Get()) + L"\\nowhere");
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\link)"));
    CHECK_FALSE(LinkExists(software.Get(), "link"));
}

TEST_CASE("a product that is a link goes without its target") {
    const std::string products = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)";
    CScratchKey scratch;
    const LinkTarget target(scratch);
    CScratchKey product(HKEY_LOCAL_MACHINE, products + R"(\VellumorHome)");
    product.AddLink("link", ObjectName(target.key));
    CUniqueKey parent;
    REQUIRE(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, products.c_str(), 0, KEY_ALL_ACCESS, parent.Receive()) ==
            ERROR_SUCCESS);
    const CUniqueKey link = MakeLink(parent.Get(), "VellumorLink", ObjectName(target.key));
    const CRepairBench bench;
    CHECK(bench.Repair("\\HKEY_LOCAL_MACHINE\\" + products + R"(\VellumorLink)"));
    CHECK_FALSE(LinkExists(parent.Get(), "VellumorLink"));
    CHECK(target.IsWhole());
}

TEST_CASE("a link in the path of a unit is followed and stays") {
    CScratchKey software;
    const LinkTarget target(software);
    SetText(software.Add(R"(target\dead\deeper)"), "d", "x");
    software.AddLink("way", ObjectName(target.key));
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\way\dead)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, target.subkey + R"(\dead)"));
    CHECK(target.IsWhole());
    CHECK(LinkExists(software.Get(), "way"));
    CHECK(bench.Exports() == std::vector<std::string>{software.Path().substr(1) + R"(\way\dead)"});
    CHECK(bench.UndoText().find("\"d\"=\"x\"") != std::string::npos);
}

TEST_CASE("a unit behind a link in its path is taken over there") {
    CScratchKey software;
    const LinkTarget target(software);
    software.Add(R"(target\dead\deeper)");
    software.Restrict(software.Add(R"(target\dead)"), 0);
    software.AddLink("way", ObjectName(target.key));
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\way\dead)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, target.subkey + R"(\dead)"));
    CHECK(target.IsWhole());
}
