// What every check of the system's lists has in common.
#include "system_areas.h"

#include <doctest/doctest.h>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "tests/support/write_times.h"

namespace {

constexpr Check kChecks[] = {&CheckFonts,
                             &CheckFirewallApplications,
                             &CheckTracing,
                             &CheckTemplateMacros,
                             &CheckServicesAndEventLogs,
                             &CheckInstallerFolders,
                             &CheckAppPaths,
                             &CheckHelpFiles,
                             &CheckSharedDlls,
                             &CheckArpCache,
                             &CheckUninstallEntries};

const AreaCase kCases[] = {
    {&CheckFonts, HKEY_LOCAL_MACHINE, kFontsArea, "", "Font #", "gone#.ttf", "Font #", "gone#.ttf", 1, false},
    {&CheckFirewallApplications, HKEY_LOCAL_MACHINE, kFirewallArea, "", "C:\\gone\\#.exe", "#:*:Enabled",
     "C:\\gone\\#.exe", "#:*:Enabled", 1, false},
    {&CheckInstallerFolders, HKEY_LOCAL_MACHINE, kInstallerFoldersArea, "", "C:\\gone\\#\\", "1",
     "C:\\gone\\#\\", "1", 1, false},
    {&CheckHelpFiles, HKEY_LOCAL_MACHINE, kHelpArea, "", "gone#.hlp", "C:\\gone", "gone#.hlp", "C:\\gone", 1,
     false},
    {&CheckHelpFiles, HKEY_LOCAL_MACHINE, kHtmlHelpArea, "", "gone#.chm", "C:\\gone", "gone#.chm", "C:\\gone",
     2, false},
    {&CheckSharedDlls, HKEY_LOCAL_MACHINE, kSharedDllsArea, "", "C:\\gone\\#.dll", "1", "C:\\gone\\#.dll", "",
     1, false},
    {&CheckTracing, HKEY_LOCAL_MACHINE, kTracingArea, "Tool #", "FileDirectory", "C:\\gone\\#",
     "FileDirectory", "C:\\gone\\#", 1, true},
    {&CheckServicesAndEventLogs, HKEY_LOCAL_MACHINE, kApplicationLogArea, "Source #", "EventMessageFile",
     "C:\\gone\\#.dll", "EventMessageFile", "C:\\gone\\#.dll", 1, true},
    {&CheckServicesAndEventLogs, HKEY_LOCAL_MACHINE, kServicesArea, "Service #", "ImagePath",
     "C:\\gone\\#.sys", "ImagePath", "C:\\gone\\#.sys", 1, true},
    {&CheckServicesAndEventLogs, HKEY_LOCAL_MACHINE, kSystemLogArea, "Source #", "EventMessageFile",
     "C:\\gone\\#.dll", "EventMessageFile", "C:\\gone\\#.dll", 1, true},
    {&CheckServicesAndEventLogs, HKEY_LOCAL_MACHINE, kTrustArea, "Package #", "$DLL", "C:\\gone\\#.dll",
     "$DLL", "C:\\gone\\#.dll", 1, true},
    {&CheckTemplateMacros, HKEY_LOCAL_MACHINE, kMacrosArea, "Macro #", "", "C:\\gone\\#.htt", "",
     "C:\\gone\\#.htt", 1, true},
    {&CheckAppPaths, HKEY_LOCAL_MACHINE, kAppPathsArea, "tool#.exe", "", "C:\\gone\\tool#.exe", "",
     "C:\\gone\\tool#.exe", 1, true},
    {&CheckUninstallEntries, HKEY_LOCAL_MACHINE, kUninstallArea, "Product #", "DisplayName", "Product", "",
     "", 1, true},
    {&CheckArpCache, HKEY_LOCAL_MACHINE, kArpCacheArea, "Product #", "Changed", "0", "", "", 1, false},
};

}  // namespace

TEST_CASE("each list of the system gives rows of its four columns, in order, and shows progress") {
    for (const AreaCase& planted : kCases) DemandRowsAndProgress(planted);
}

TEST_CASE("a list of the system that does not exist gives neither rows nor progress") {
    const CScratchRegistry registry;
    for (const Check check : kChecks) {
        CRecordingView view;
        CHECK(view.Run(check).inTime);
        CHECK(view.Events().empty());
    }
}

TEST_CASE("a list of the system that may only be read is not examined") {
    for (const AreaCase& planted : kCases) DemandNothingWithoutAccess(planted);
}

TEST_CASE("an entry of a system list that may not be changed or opened is passed over") {
    for (const AreaCase& planted : kCases) DemandClosedEntryPassedOver(planted);
}

TEST_CASE("a cancelled check of a system list ends with one message and no further rows") {
    for (const AreaCase& planted : kCases) DemandEndWhenCanceled(planted);
}

TEST_CASE("a check of a system list closes what it opened, at its end and when it is cancelled") {
    for (const AreaCase& planted : kCases) DemandEverythingClosed(planted);
}

TEST_CASE("entries that are found on the real machine are reported like any other") {
    CAreaKey fonts(HKEY_LOCAL_MACHINE, kFontsArea);
    CAreaKey services(HKEY_LOCAL_MACHINE, kServicesArea);
    fonts.AddText("Vellumor test font", "vellumor-gone.ttf");
    SetText(services.Add("VellumorTestService"), "ImagePath", "system32\\drivers\\vellumor-gone.sys");
    const std::string line =
        "\\HKEY_LOCAL_MACHINE\\" + std::string(kFontsArea) + "||Vellumor test font|vellumor-gone.ttf\n";
    CHECK(RowsOf(&CheckFonts).find(line) != std::string::npos);
    const std::string service =
        "\\HKEY_LOCAL_MACHINE\\" + std::string(kServicesArea) + "\\VellumorTestService";
    CHECK(RowsOf(&CheckServicesAndEventLogs, {service}) ==
          service + "|timed|ImagePath|system32\\drivers\\vellumor-gone.sys\n");
}

TEST_CASE("a row's write time is its own subkey's, in UTC") {
    CScratchRegistry registry;
    for (const AreaCase& planted : kCases)
        if (planted.timed) {
            CScratchArea area(registry, planted.root, planted.area);
            area.Add("Entry", planted.name, "C:\\gone\\x");
        }
    ::Sleep(1'100);
    for (const AreaCase& planted : kCases)
        if (planted.timed) {
            CAPTURE(planted.area);
            CScratchArea area(registry, planted.root, planted.area);
            const HKEY entry = area.Key("Entry");
            SetText(area.Key(), "touched", "now");
            const std::string time = UtcText(KeyWriteTime(entry));
            REQUIRE(UtcText(KeyWriteTime(area.Key())) != time);
            CHECK(TimedRowsOf(planted.check, {area.Path("Entry")})
                      .starts_with(area.Path("Entry") + "|" + time + "|"));
        }
}
