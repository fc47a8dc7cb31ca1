#include <doctest/doctest.h>

#include "analysis/classes/software_checks.h"
#include "check_support.h"
#include "tests/support/scratch_folder.h"

namespace {

const std::string kProducts = "SOFTWARE\\Classes\\Installer\\Products";
const std::string kPatches = "SOFTWARE\\Classes\\Installer\\Patches";
const std::string kUserProducts = "SOFTWARE\\Microsoft\\Installer\\Products";

std::string RowOf(const std::string& area, const std::string& name, const std::string& data) {
    return area + "\\" + name + "\\SourceList|timed|LastUsedSource|" + data + "\n";
}

std::string ProductRow(const std::string& name, const std::string& data) {
    return RowOf("\\HKEY_LOCAL_MACHINE\\" + kProducts, name, data);
}

std::string RowsOfSource(const std::string& bytes, const std::string& product = "p",
                         const std::string& valueName = "LastUsedSource") {
    CScratchRegistry registry;
    SetBytes(registry.Add(HKEY_LOCAL_MACHINE, kProducts + "\\" + product + "\\SourceList"), valueName, REG_SZ,
             bytes);
    return RowsOf(&CheckInstallerSources);
}

}  // namespace

TEST_CASE("every installer source that can be read is reported with its whole text") {
    const CScratchFolder folder;
    CHECK(RowsOfSource("n;1;C:\\gone\\") == ProductRow("p", "n;1;C:\\gone\\"));
    CHECK(RowsOfSource("n;1;" + folder.Path()) == ProductRow("p", "n;1;" + folder.Path()));
    CHECK(RowsOfSource(folder.Path()) == ProductRow("p", folder.Path()));
    CHECK(RowsOfSource("abc") == ProductRow("p", "abc"));
    CHECK(RowsOfSource("abcdef") == ProductRow("p", "abcdef"));
    CHECK(RowsOfSource("") == ProductRow("p", ""));
}

TEST_CASE("an installer source of 100 bytes is reported, a longer one is not") {
    for (const std::size_t bytes : {std::size_t{99}, std::size_t{100}})
        CHECK(RowsOfSource(std::string(bytes - 1, 's') + '\0') ==
              ProductRow("p", std::string(bytes - 1, 's')));
    CHECK(RowsOfSource(std::string(100, 's') + '\0').empty());
}

TEST_CASE("products of 99 characters are looked at, longer ones are not") {
    for (const std::size_t length : {std::size_t{98}, std::size_t{99}})
        CHECK(RowsOfSource("s", std::string(length, 'p')) == ProductRow(std::string(length, 'p'), "s"));
    CHECK(RowsOfSource("s", std::string(100, 'p')).empty());
}

TEST_CASE("a product without a source list, without its value or without write access is passed over") {
    CHECK(RowsOfSource("s", "p", "PackageName").empty());
    CHECK(RowsOfSource("s", "p", "").empty());
    CScratchRegistry registry;
    registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\a", "LastUsedSource", "s");
    const HKEY product = registry.Add(HKEY_LOCAL_MACHINE, kProducts + "\\b");
    registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\b\\SourceList", "LastUsedSource", "s");
    registry.MakeReadOnly(product);
    registry.MakeReadOnly(
        registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\c\\SourceList", "LastUsedSource", "s"));
    registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\d\\SourceList\\Net", "LastUsedSource", "s");
    registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\e\\SourceList", "LastUsedSource", "s");
    CHECK(RowsOf(&CheckInstallerSources) == ProductRow("e", "s"));
}

TEST_CASE("the installer's three areas are read in their order, each by itself") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CURRENT_USER, kUserProducts + "\\u\\SourceList", "LastUsedSource", "user");
    registry.AddText(HKEY_LOCAL_MACHINE, kPatches + "\\t\\SourceList", "LastUsedSource", "patch");
    registry.AddText(HKEY_LOCAL_MACHINE, kProducts + "\\p\\SourceList", "LastUsedSource", "product");
    const std::string product = ProductRow("p", "product");
    const std::string patch = RowOf("\\HKEY_LOCAL_MACHINE\\" + kPatches, "t", "patch");
    const std::string user = RowOf("\\HKEY_CURRENT_USER\\" + kUserProducts, "u", "user");
    CHECK(RowsOf(&CheckInstallerSources) == product + patch + user);
    registry.MakeReadOnly(registry.Add(HKEY_LOCAL_MACHINE, kProducts));
    CHECK(RowsOf(&CheckInstallerSources) == patch + user);
    registry.MakeReadOnly(registry.Add(HKEY_LOCAL_MACHINE, kPatches));
    CHECK(RowsOf(&CheckInstallerSources) == user);
    registry.MakeReadOnly(registry.Add(HKEY_CURRENT_USER, kUserProducts));
    CHECK(RowsOf(&CheckInstallerSources).empty());
}

TEST_CASE("the source list is the key that is shown while a product is examined") {
    CScratchRegistry registry;
    registry.Add(HKEY_LOCAL_MACHINE, kProducts + "\\p");
    CRecordingView view;
    CHECK(view.Run(&CheckInstallerSources).inTime);
    CHECK(view.Progress() ==
          std::vector<std::string>{"\\HKEY_LOCAL_MACHINE\\" + kProducts + "\\p\\SourceList"});
}
