#include <doctest/doctest.h>

#include "analysis/classes/software_checks.h"
#include "check_support.h"
#include "tests/support/scratch_folder.h"

namespace {

/// An area whose subkeys each name a file or folder.
struct FolderArea {
    Check check;
    HKEY root;
    const char* subkey;
    const char* valueName;
};

const FolderArea kFolderAreas[] = {
    {&CheckMediaTracing, HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Tracing\\LccMedia", "FileDirectory"},
    {&CheckCdProviders, HKEY_LOCAL_MACHINE,
     "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Applets\\DeluxeCD\\Providers", "ProviderLogo"},
    {&CheckBrowserFolders, HKEY_LOCAL_MACHINE,
     "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Cache\\Paths", "CachePath"},
};

std::string RowOf(const FolderArea& area, const std::string& name, const std::string& data) {
    const std::string root =
        area.root == HKEY_CURRENT_USER ? "\\HKEY_CURRENT_USER\\" : "\\HKEY_LOCAL_MACHINE\\";
    return root + area.subkey + "\\" + name + "|timed|" + area.valueName + "|" + data + "\n";
}

std::string RowsOfFolder(const FolderArea& area, const std::string& data, const std::string& valueName) {
    CScratchRegistry registry;
    registry.AddText(area.root, std::string(area.subkey) + "\\x", valueName, data);
    return RowsOf(area.check);
}

std::string RowsOfFolder(const FolderArea& area, const std::string& data) {
    return RowsOfFolder(area, data, area.valueName);
}

constexpr const char* kHistory =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Url History";
constexpr const char* kMain = "SOFTWARE\\Microsoft\\Internet Explorer\\Main";
const std::string kHistoryRow = "\\HKEY_LOCAL_MACHINE\\" + std::string(kHistory) + "||Directory|";
const std::string kMainRow = "\\HKEY_LOCAL_MACHINE\\" + std::string(kMain) + "||Local Page|";

}  // namespace

TEST_CASE("a remembered file or folder that is gone is reported") {
    const CScratchFolder folder;
    const std::string file = folder.AddFile("here.bmp");
    for (const FolderArea& area : kFolderAreas) {
        CAPTURE(area.subkey);
        CHECK(RowsOfFolder(area, "C:\\gone\\x") == RowOf(area, "x", "C:\\gone\\x"));
        CHECK(RowsOfFolder(area, file).empty());
        CHECK(RowsOfFolder(area, folder.Path()).empty());
        CHECK(RowsOfFolder(area, file + " /s") == RowOf(area, "x", file + " /s"));  // the text as it stands
        CHECK(RowsOfFolder(area, "%SystemRoot%") == RowOf(area, "x", "%SystemRoot%"));
        CHECK(RowsOfFolder(area, "").empty());
        CHECK(RowsOfFolder(area, "C:\\gone\\x", "Other").empty());
        CHECK(RowsOfFolder(area, "C:\\gone\\x", "").empty());
    }
}

TEST_CASE("a remembered file or folder is read into 250 bytes, a larger value is passed over") {
    for (const FolderArea& area : kFolderAreas) {
        CAPTURE(area.subkey);
        for (const std::size_t bytes : {std::size_t{249}, std::size_t{250}}) {
            const std::string path = "C:\\" + std::string(bytes - 4, 'x');
            CHECK(RowsOfFolder(area, path) == RowOf(area, "x", path));
        }
        CHECK(RowsOfFolder(area, "C:\\" + std::string(247, 'x')).empty());
    }
}

TEST_CASE("subkeys are reported in their order, and those without write access are passed over") {
    for (const FolderArea& area : kFolderAreas) {
        CAPTURE(area.subkey);
        CScratchRegistry registry;
        const std::string subkey = area.subkey;
        registry.AddText(area.root, subkey + "\\b", area.valueName, "C:\\gone\\b");
        registry.AddText(area.root, subkey + "\\a", area.valueName, "C:\\gone\\a");
        registry.MakeReadOnly(registry.AddText(area.root, subkey + "\\aa", area.valueName, "C:\\gone\\aa"));
        registry.Add(area.root, subkey + "\\ab");
        registry.AddText(area.root, subkey + "\\ac\\d", area.valueName, "C:\\gone\\d");
        registry.AddText(area.root, subkey, area.valueName, "C:\\gone\\area");
        CHECK(RowsOf(area.check) == RowOf(area, "a", "C:\\gone\\a") + RowOf(area, "b", "C:\\gone\\b"));
    }
}

TEST_CASE("the browser's history folder is reported when it is gone") {
    const CScratchFolder folder;
    const auto rowsOf = [](const std::string& name, const std::string& data) {
        CScratchRegistry registry;
        registry.AddText(HKEY_LOCAL_MACHINE, kHistory, name, data);
        return RowsOf(&CheckBrowserFolders);
    };
    CHECK(rowsOf("Directory", "C:\\gone") == kHistoryRow + "C:\\gone\n");
    CHECK(rowsOf("Directory", folder.Path()).empty());
    CHECK(rowsOf("Directory", "").empty());
    CHECK(rowsOf("Other", "C:\\gone").empty());
    CHECK(rowsOf("Directory", std::string(248, 'x')) == kHistoryRow + std::string(248, 'x') + "\n");
    CHECK(rowsOf("Directory", std::string(249, 'x')) == kHistoryRow + std::string(249, 'x') + "\n");
    CHECK(rowsOf("Directory", std::string(250, 'x')).empty());
}

TEST_CASE("the local page is read from the history key and reported at the browser's main key") {
    const CScratchFolder folder;
    const auto rowsOf = [](const std::string& data) {
        CScratchRegistry registry;
        registry.Add(HKEY_LOCAL_MACHINE, kMain);
        registry.AddText(HKEY_LOCAL_MACHINE, kHistory, "Local Page", data);
        return RowsOf(&CheckBrowserFolders);
    };
    CHECK(rowsOf("C:\\gone.htm") == kMainRow + "C:\\gone.htm\n");
    CHECK(rowsOf(folder.AddFile("here.htm")).empty());
    CHECK(rowsOf("").empty());
    CHECK(rowsOf(std::string(249, 'x')) == kMainRow + std::string(249, 'x') + "\n");
    CHECK(rowsOf(std::string(250, 'x')).empty());
}

TEST_CASE("the local page in the browser's own main key is not looked at") {
    CScratchRegistry registry;
    registry.AddText(HKEY_LOCAL_MACHINE, kMain, "Local Page", "C:\\gone.htm");
    CHECK(RowsOf(&CheckBrowserFolders).empty());
    registry.Add(HKEY_LOCAL_MACHINE, kHistory);
    CHECK(RowsOf(&CheckBrowserFolders).empty());
}

TEST_CASE("the local page wants both keys to open") {
    CScratchRegistry registry;
    const HKEY history = registry.AddText(HKEY_LOCAL_MACHINE, kHistory, "Local Page", "C:\\gone.htm");
    SetText(history, "Directory", "C:\\gone");
    CHECK(RowsOf(&CheckBrowserFolders) == kHistoryRow + "C:\\gone\n");
    const HKEY main = registry.Add(HKEY_LOCAL_MACHINE, kMain);
    CHECK(RowsOf(&CheckBrowserFolders) == kHistoryRow + "C:\\gone\n" + kMainRow + "C:\\gone.htm\n");
    registry.MakeReadOnly(main);
    CHECK(RowsOf(&CheckBrowserFolders) == kHistoryRow + "C:\\gone\n");
    registry.MakeReadOnly(history);
    CHECK(RowsOf(&CheckBrowserFolders).empty());
}

TEST_CASE("the browser's areas are read in their order, each by itself") {
    CScratchRegistry registry;
    const HKEY history = registry.AddText(HKEY_LOCAL_MACHINE, kHistory, "Local Page", "C:\\gone.htm");
    SetText(history, "Directory", "C:\\gone");
    registry.Add(HKEY_LOCAL_MACHINE, kMain);
    const FolderArea& cache = kFolderAreas[2];
    const HKEY path =
        registry.AddText(cache.root, std::string(cache.subkey) + "\\Path1", "CachePath", "C:\\gone\\1");
    const std::string others = kHistoryRow + "C:\\gone\n" + kMainRow + "C:\\gone.htm\n";
    CHECK(RowsOf(&CheckBrowserFolders) == RowOf(cache, "Path1", "C:\\gone\\1") + others);
    registry.MakeReadOnly(registry.Add(cache.root, cache.subkey));
    CHECK(RowsOf(&CheckBrowserFolders) == others);
    registry.MakeReadOnly(history);
    CHECK(RowsOf(&CheckBrowserFolders).empty());
    (void)path;
}

TEST_CASE("a cancel between the history folder and the local page is noticed") {
    CScratchRegistry registry;
    const HKEY history = registry.AddText(HKEY_LOCAL_MACHINE, kHistory, "Local Page", "C:\\gone.htm");
    SetText(history, "Directory", "C:\\gone");
    registry.Add(HKEY_LOCAL_MACHINE, kMain);
    CHECK(RowsWhenCanceledAtFirstRow(&CheckBrowserFolders) == kHistoryRow + "C:\\gone\n");
}
