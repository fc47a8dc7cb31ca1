#include "analysis/category_driver.h"

#include <doctest/doctest.h>

#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "analysis/channel.h"
#include "analysis/classes/class_checks.h"
#include "analysis/classes/software_checks.h"
#include "analysis/com/com_checks.h"
#include "analysis/deep_scan.h"
#include "analysis/history/history_checks.h"
#include "analysis/report.h"
#include "analysis/stages.h"
#include "analysis/system/system_checks.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

namespace {

/// A place of the driver: words that its area's name holds, and its check.
struct Place {
    std::vector<std::string> words;
    void (*check)();
};

const Place kPlaces[] = {
    {{"FileExts"}, &CheckFileExts},
    {{"HKEY_CLASSES_ROOT", "shell", "command", "DefaultIcon"}, &CheckClassKeys},
    {{"ARPCache"}, &CheckArpCache},
    {{"UserAssist"}, &CheckUserAssist},
    {{"LastVisitedMRU"}, &CheckLastVisitedMru},
    {{"OpenSaveMRU"}, &CheckOpenSaveMru},
    {{"FileExts"}, &CheckFileExts},
    {{"OpenWithList"}, &CheckFileExtsOpenWithList},
    {{"RecentDocs"}, &CheckRecentDocs},
    {{"RecentDocs"}, &CheckRecentDocsByType},
    {{"RunMRU"}, &CheckRunMru},
    {{"StreamMRU"}, &CheckStreamMru},
    {{"Wallpaper"}, &CheckWallpaperMru},
    {{"Uninstall"}, &CheckUninstallEntries},
    {{"SharedDlls"}, &CheckSharedDlls},
    {{"Help"}, &CheckHelpFiles},
    {{"Installer Folders"}, &CheckInstallerFolders},
    {{"App Paths"}, &CheckAppPaths},
    {{"firewall"}, &CheckFirewallApplications},
    {{"TypedURLs"}, &CheckTypedUrls},
    {{"Fonts"}, &CheckFonts},
    {{"MenuOrder", "Start Menu", "Programs"}, &CheckStartMenuOrder},
    {{"Tracing"}, &CheckTracing},
    {{"TemplateMacros"}, &CheckTemplateMacros},
    {{"Installer", "Products", "Patches"}, &CheckInstallerSources},
    {{"HKEY_CLASSES_ROOT", "CurVer"}, &CheckCurrentVersions},
    {{"HKEY_CLASSES_ROOT", "AppID"}, &CheckAppIds},
    {{"Internet Settings", "Cache", "Paths"}, &CheckBrowserFolders},
    {{"Tracing", "LccMedia"}, &CheckMediaTracing},
    {{"ShellNoRoam", "MUICache"}, &CheckMuiCache},
    {{"Eventlog", "services"}, &CheckServicesAndEventLogs},
    {{"HKEY_CLASSES_ROOT", "top-level keys"}, &CheckEmptyFileTypes},
    {{"MIME", "Database", "Content Type"}, &CheckMimeTypes},
    {{"DeluxeCD", "Providers"}, &CheckCdProviders},
    {{"HKEY_CLASSES_ROOT", "further check"}, &CheckFileTypeLinks},
    {{"Software", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"}, &CheckSoftwareKeys},
    {{"Run keys"}, &CheckRunEntries},
};

}  // namespace

TEST_CASE("the last stage has 37 places in their order") {
    static_assert(std::size(kPlaces) == 37);
    REQUIRE(CategoryChecks().size() == 37);
    for (std::size_t index = 0; index < 37; ++index) {
        const Check& place = CategoryChecks()[index];
        const std::string area = place.area;
        CAPTURE(index);
        CAPTURE(area);
        for (const std::string& word : kPlaces[index].words) {
            CAPTURE(word);
            CHECK(area.find(word) != std::string::npos);
        }
        CHECK((place.run == kPlaces[index].check));
    }
}

TEST_CASE("the file extension check stands twice, at the first and the seventh place") {
    CHECK(std::string(CategoryChecks()[0].area) == CategoryChecks()[6].area);
    CHECK((CategoryChecks()[0].run == CategoryChecks()[6].run));
}

TEST_CASE("running the places shows the keys of their areas one after another, to the end") {
    CRecordingView view;
    const WorkerEnd end = view.Run(&RunCategoryChecks);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.ProgressOf(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)") == 1);
    CHECK(view.Progress().back() == R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)");
}

namespace {

/// A choice of one check.
class COneCheck : public CCheckChoice {
public:
    explicit COneCheck(std::string_view name) : m_name(name) {}
    [[nodiscard]] bool Includes(std::string_view checkName) const override { return checkName == m_name; }

private:
    std::string_view m_name;
};

}  // namespace

TEST_CASE("all checks are those of the stages and then of the places, each once") {
    const std::vector<Check> checks = AllChecks();
    REQUIRE(checks.size() == 45);
    CHECK((checks[0].run == &ScanLocalMachine));
    CHECK((checks[8].run == &CheckInterfaces));
    CHECK((checks[9].run == &CheckFileExts));
    CHECK((checks[44].run == &CheckRunEntries));
    std::set<std::string> names;
    for (const Check& check : checks) names.insert(check.name);
    CHECK(names.size() == 45);
}

TEST_CASE("a row carries the name of the check that runs") {
    CScratchKey key(HKEY_LOCAL_MACHINE);
    SetText(key.Get(), "x", "C:\\gone\\x.dll");
    CRecordingView view;
    static std::string path;
    path = key.Path();
    const Check scan{"some-check", "", "", [] { ReportIfFileMissing(path.c_str(), "x", "C:\\gone\\x.dll"); }};
    (void)view.Run([&] { RunCheck(scan); });
    REQUIRE(view.Rows().size() == 1);
    CHECK(view.Rows()[0].check == "some-check");
    CHECK(view.Rows()[0].reason == "It names a file or folder that does not exist.");
}

TEST_CASE("a check that is not chosen does not run, in a stage or among the places") {
    const COneCheck wallpapers("wallpapers");
    g_analysisContext.pCheckChoice = &wallpapers;
    for (std::size_t index = 0; index < 10; ++index) {
        CRecordingView view;
        CHECK(view.RunStage(AnalysisStages()[index].threadProc).inTime);
        // Only the done message, or the one place that was chosen.
        CHECK(view.Rows().empty());
        for (const std::string& key : view.Progress()) CHECK(key.ends_with("Wallpaper\\MRU"));
        CHECK(view.Events().back().message == 0x465 + index);
    }
    g_analysisContext.pCheckChoice = nullptr;
}
