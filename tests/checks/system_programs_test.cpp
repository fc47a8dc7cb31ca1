// Registered program paths and uninstall entries.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "system_areas.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr char kHere[] = "%windir%\\notepad.exe";
constexpr char kGone[] = "C:\\gone\\tool.exe";

struct AppPaths : OneArea {
    AppPaths() : OneArea(HKEY_LOCAL_MACHINE, kAppPathsArea) {}
};

struct Uninstall : OneArea {
    Uninstall() : OneArea(HKEY_LOCAL_MACHINE, kUninstallArea) {}
    /// A product that none of the rules reports yet.
    void AddSound(const std::string& product) { area.Add(product, "UninstallString", "x.exe"); }
};

/// A path of so many bytes with its terminator, to nothing.
std::string GonePath(std::size_t bytes) { return "C:\\gone\\" + std::string(bytes - 9, 'x'); }

}  // namespace

TEST_CASE("a program path that leads to its program is not reported") {
    AppPaths one;
    one.area.Add("notepad.exe", "", kHere);
    one.area.Add("notepad.exe", "Path", "C:\\gone");
    CHECK(RowsOf(&CheckAppPaths).empty());
}

TEST_CASE("a program key without any value is reported") {
    AppPaths one;
    (void)one.area.Key("a.exe");
    one.area.Key("b.exe\\shell");
    CHECK(RowsOf(&CheckAppPaths) ==
          Lines({one.area.Timed("a.exe", "", ""), one.area.Timed("b.exe", "", "")}));
}

TEST_CASE("a program key whose first value is empty is reported under that value's name") {
    AppPaths one;
    one.area.Add("a.exe", "", "");
    one.area.Add("b.exe", "Path", "", REG_EXPAND_SZ);  // no text value, so the default is not asked for
    one.area.Add("c.exe", "", kHere);
    one.area.Add("c.exe", "Path", "");  // not the first
    CHECK(RowsOf(&CheckAppPaths) ==
          Lines({one.area.Timed("a.exe", "", ""), one.area.Timed("b.exe", "Path", "")}));
}

TEST_CASE("a program key without default value has a row for each of its text values") {
    AppPaths one;
    one.area.Add("a.exe", "Path", "x");
    one.area.Add("a.exe", "Use", "y");
    one.area.Add("a.exe", "Wide", "z", REG_EXPAND_SZ);
    const std::string row = one.area.Timed("a.exe", "", "");
    CHECK(RowsOf(&CheckAppPaths) == Lines({row, row}));
}

TEST_CASE("an empty first text value and the missing default value are reported each on its own") {
    AppPaths one;
    one.area.Add("a.exe", "Path", "");
    CHECK(RowsOf(&CheckAppPaths) ==
          Lines({one.area.Timed("a.exe", "Path", ""), one.area.Timed("a.exe", "", "")}));
}

TEST_CASE("a program path of another type than REG_SZ is not followed") {
    AppPaths one;
    one.area.Add("a.exe", "", kGone, REG_EXPAND_SZ);
    one.area.Add("b.exe", "", kGone, REG_BINARY);
    one.area.Add("c.exe", "", kGone);
    CHECK(RowsOf(&CheckAppPaths) == Lines({one.area.Timed("c.exe", "", kGone)}));
}

TEST_CASE("program paths of up to 250 bytes are examined, and one that is too large counts as no value") {
    AppPaths one;
    for (const std::size_t bytes : {249U, 250U, 251U})
        one.area.Add(std::to_string(bytes), "", GonePath(bytes));
    CHECK(RowsOf(&CheckAppPaths) ==
          Lines({one.area.Timed("249", "", GonePath(249)), one.area.Timed("250", "", GonePath(250))}));
}

TEST_CASE("a default value that is too large is there all the same for the other values") {
    AppPaths one;
    one.area.Add("a.exe", "", GonePath(300));
    one.area.Add("a.exe", "Path", "x");
    CHECK(RowsOf(&CheckAppPaths).empty());
}

TEST_CASE("a product with an uninstall command, or a system component, is sound") {
    Uninstall one;
    one.AddSound("A");
    one.area.Add("B", "SystemComponent", "1");
    SetBytes(one.area.Key("C"), "SystemComponent", REG_DWORD, std::string("\0\0\0\0", 4));
    one.area.Add("D", "UninstallString", "");
    CHECK(RowsOf(&CheckUninstallEntries).empty());
}

TEST_CASE("a product with neither uninstall command nor system mark is reported") {
    Uninstall one;
    one.area.Add("A", "DisplayName", "Product");
    one.area.Add("B", "uninstallstring", "x.exe");
    one.area.Add("C", "systemcomponent", "1");
    CHECK(RowsOf(&CheckUninstallEntries) ==
          Lines({one.area.Timed("A", "", ""), one.area.Timed("B", "", ""), one.area.Timed("C", "", "")}));
}

TEST_CASE("an uninstall command that is too large is there, a system mark that is too large cannot be read") {
    Uninstall one;
    one.area.Add("A", "UninstallString", GonePath(251));
    one.area.Add("B", "SystemComponent", GonePath(250));
    one.area.Add("C", "SystemComponent", GonePath(251));
    CHECK(RowsOf(&CheckUninstallEntries) == Lines({one.area.Timed("C", "", "")}));
}

TEST_CASE("a product without values and subkeys is reported as unable to uninstall and as empty") {
    Uninstall one;
    (void)one.area.Key("A");
    (void)one.area.Key("B\\Subkey");
    const std::string row = one.area.Timed("A", "", "");
    CHECK(RowsOf(&CheckUninstallEntries) == Lines({row, row, one.area.Timed("B", "", "")}));
}

TEST_CASE("a product with an empty default value and nothing else is reported twice as well") {
    Uninstall one;
    one.area.Add("A", "", "");
    one.area.Add("B", "", "Product");
    one.area.Add("C", "", "");
    (void)one.area.Key("C\\Subkey");
    one.area.Add("D", "", "");
    one.area.Add("D", "DisplayName", "");
    one.area.Add("E", "DisplayName", "");
    const std::string row = one.area.Timed("A", "", "");
    CHECK(RowsOf(&CheckUninstallEntries) ==
          Lines({row, row, one.area.Timed("B", "", ""), one.area.Timed("C", "", ""),
                 one.area.Timed("D", "", ""), one.area.Timed("E", "", "")}));
}

TEST_CASE("an installer source that is gone is reported with its path") {
    const CScratchFolder scratch;
    Uninstall one;
    for (const char* product : {"A", "B", "C", "D", "E", "F"}) one.AddSound(product);
    one.area.Add("A", "InstallSource", scratch.Path() + "\\");
    one.area.Add("B", "InstallSource", "C:\\gone\\");
    one.area.Add("C", "InstallSource", "C:\\gone\\", REG_EXPAND_SZ);
    one.area.Add("D", "InstallSource", "");
    one.area.Add("E", "installsource", "C:\\gone\\");
    one.area.Add("F", "InstallSource", scratch.Path() + ",0");  // only icons are cut
    CHECK(RowsOf(&CheckUninstallEntries) ==
          Lines({one.area.Timed("B", "InstallSource", "C:\\gone\\"),
                 one.area.Timed("F", "InstallSource", scratch.Path() + ",0")}));
}

TEST_CASE("an icon is sought without its number and shown so") {
    const CScratchFolder scratch;
    const std::string icon = scratch.AddFile("here.ico");
    Uninstall one;
    for (const char* product : {"A", "B", "C", "D", "E", "F", "G", "H"}) one.AddSound(product);
    one.area.Add("A", "DisplayIcon", icon);
    one.area.Add("B", "DisplayIcon", icon + ",-101");
    one.area.Add("C", "DisplayIcon", "C:\\gone\\c.exe,0");
    one.area.Add("D", "DisplayIcon", "C:\\gone\\d.exe,1,2");
    one.area.Add("E", "DisplayIcon", ",0");
    one.area.Add("F", "DisplayIcon", "C:\\gone\\f.exe", REG_EXPAND_SZ);
    one.area.Add("G", "displayicon", "C:\\gone\\g.exe");
    one.area.Add("H", "DisplayIcon", "\"" + icon + "\"");  // quotes belong to the text
    CHECK(RowsOf(&CheckUninstallEntries) == Lines({one.area.Timed("C", "DisplayIcon", "C:\\gone\\c.exe"),
                                                   one.area.Timed("D", "DisplayIcon", "C:\\gone\\d.exe"),
                                                   one.area.Timed("H", "DisplayIcon", "\"" + icon + "\"")}));
}

TEST_CASE("installer sources and icons of up to 250 bytes are examined") {
    for (const char* name : {"InstallSource", "DisplayIcon"}) {
        CAPTURE(name);
        Uninstall one;
        for (const std::size_t bytes : {249U, 250U, 251U}) {
            one.AddSound(std::to_string(bytes));
            one.area.Add(std::to_string(bytes), name, GonePath(bytes));
        }
        CHECK(RowsOf(&CheckUninstallEntries) == Lines({one.area.Timed("249", name, GonePath(249)),
                                                       one.area.Timed("250", name, GonePath(250))}));
    }
}

TEST_CASE("a product's rows come in the order of the rules, before the next product's") {
    Uninstall one;
    one.area.Add("A", "DisplayIcon", "C:\\gone\\a.ico");
    one.area.Add("A", "InstallSource", "C:\\gone\\");
    one.area.Add("B", "InstallSource", "C:\\gone\\");
    CHECK(RowsOf(&CheckUninstallEntries) ==
          Lines({one.area.Timed("A", "InstallSource", "C:\\gone\\"),
                 one.area.Timed("A", "DisplayIcon", "C:\\gone\\a.ico"), one.area.Timed("A", "", ""),
                 one.area.Timed("B", "InstallSource", "C:\\gone\\"), one.area.Timed("B", "", "")}));
}
