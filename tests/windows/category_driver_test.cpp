#include "analysis/category_driver.h"

#include <doctest/doctest.h>

#include <iterator>
#include <string>
#include <vector>

#include "recording_view.h"

namespace {

/// A place of the driver: words that its area's name holds, and whether its check is built.
struct Place {
    std::vector<std::string> words;
    bool isBuilt = false;
};

const Place kPlaces[] = {
    {{"CheckFileExts:", "FileExts"}},
    {{"HKEY_CLASSES_ROOT", "shell", "command", "DefaultIcon"}},
    {{"CheckArpCache:", "ARPCache"}},
    {{"CheckUserAssist:", "UserAssist"}},
    {{"CheckLastVisitedMru:", "LastVisitedMRU"}},
    {{"CheckOpenSaveMru:", "OpenSaveMRU"}},
    {{"CheckFileExts:", "FileExts"}},
    {{"CheckFileExtsOpenWithList:", "OpenWithList"}},
    {{"CheckRecentDocs:", "RecentDocs"}},
    {{"CheckRecentDocsByType:", "RecentDocs"}},
    {{"CheckRunMru:", "RunMRU"}},
    {{"CheckStreamMru:", "StreamMRU"}},
    {{"CheckWallpaperMru:", "Wallpaper"}},
    {{"CheckUninstallEntries:", "Uninstall"}},
    {{"CheckSharedDlls:", "SharedDlls"}},
    {{"CheckHelpFiles:", "Help"}},
    {{"CheckInstallerFolders:", "Installer Folders"}},
    {{"CheckAppPaths:", "App Paths"}},
    {{"CheckFirewallApplications:", "firewall"}},
    {{"CheckTypedUrls:", "TypedURLs"}},
    {{"CheckFonts:", "Fonts"}},
    {{"MenuOrder", "Start Menu", "Programs"}},
    {{"CheckTracing:", "Tracing"}},
    {{"CheckTemplateMacros:", "TemplateMacros"}},
    {{"Installer", "Products", "Patches"}},
    {{"HKEY_CLASSES_ROOT", "CurVer"}},
    {{"HKEY_CLASSES_ROOT", "AppID"}},
    {{"Internet Settings", "Cache", "Paths"}},
    {{"Tracing", "LccMedia"}},
    {{"ShellNoRoam", "MUICache"}},
    {{"CheckServicesAndEventLogs:", "Eventlog", "services"}},
    {{"HKEY_CLASSES_ROOT", "top-level keys"}},
    {{"MIME", "Database", "Content Type"}},
    {{"DeluxeCD", "Providers"}},
    {{"HKEY_CLASSES_ROOT", "further check"}},
    {{"Software", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"}},
    {{"Run keys"}},
};

}  // namespace

TEST_CASE("the last stage has 37 places in their order, those of unbuilt checks empty") {
    static_assert(std::size(kPlaces) == 37);
    REQUIRE(CategoryChecks().size() == 37);
    for (std::size_t index = 0; index < 37; ++index) {
        const CategoryCheck& place = CategoryChecks()[index];
        const std::string area = place.area;
        CAPTURE(index);
        CAPTURE(area);
        for (const std::string& word : kPlaces[index].words) {
            CAPTURE(word);
            CHECK(area.find(word) != std::string::npos);
        }
        CHECK((place.check != nullptr) == kPlaces[index].isBuilt);
    }
}

TEST_CASE("the file extension check stands twice, at the first and the seventh place") {
    CHECK(std::string(CategoryChecks()[0].area) == CategoryChecks()[6].area);
    CHECK((CategoryChecks()[0].check == CategoryChecks()[6].check));
}

TEST_CASE("running the places passes over the empty ones") {
    CRecordingView view;
    const WorkerEnd end = view.Run(&RunCategoryChecks);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.Events().empty());
}
