// What every check of the user's histories has in common.
#include "history_areas.h"

#include <doctest/doctest.h>

#include "analysis/history/history_checks.h"
#include "area_cases.h"
#include "tests/support/write_times.h"

namespace {

constexpr Check kChecks[] = {&CheckTypedUrls,        &CheckLastVisitedMru, &CheckOpenSaveMru,
                             &CheckFileExts,         &CheckRecentDocs,     &CheckFileExtsOpenWithList,
                             &CheckRecentDocsByType, &CheckRunMru,         &CheckStreamMru,
                             &CheckWallpaperMru,     &CheckUserAssist};

const AreaCase kCases[] = {
    {&CheckTypedUrls, HKEY_CURRENT_USER, kTypedUrlsArea, "", "url#", "http://site#/", "url#", "http://site#/",
     1, false},
    {&CheckLastVisitedMru, HKEY_CURRENT_USER, kLastVisitedArea, "", "v#", "x", "v#", "", 1, false},
    {&CheckOpenSaveMru, HKEY_CURRENT_USER, kOpenSaveArea, "", "v#", "C:\\#.txt", "v#", "C:\\#.txt", 1, false},
    {&CheckOpenSaveMru, HKEY_CURRENT_USER, kOpenSaveArea, "ext#", "a", "C:\\#.txt", "a", "C:\\#.txt", 1,
     true},
    {&CheckRecentDocs, HKEY_CURRENT_USER, kRecentDocsArea, "", "v#", "x", "v#", "", 1, false},
    {&CheckRecentDocsByType, HKEY_CURRENT_USER, kRecentDocsArea, ".ext#", "v#", "x", "v#", "", 1, true},
    {&CheckRunMru, HKEY_CURRENT_USER, kRunArea, "", "v#", "cmd\\1", "v#", "", 1, false},
    {&CheckStreamMru, HKEY_CURRENT_USER, kStreamArea, "", "v#", "x", "v#", "", 1, false},
    {&CheckWallpaperMru, HKEY_CURRENT_USER, kWallpaperArea, "", "v#", "x", "v#", "", 1, false},
    {&CheckUserAssist, HKEY_CURRENT_USER, kUserAssistArea1, "", "HRZR_#", "x", "HRZR_#", "UEME_#", 1, false},
    {&CheckUserAssist, HKEY_CURRENT_USER, kUserAssistArea2, "", "HRZR_#", "x", "HRZR_#", "UEME_#", 1, false},
    {&CheckFileExts, HKEY_CURRENT_USER, kFileExtsArea, ".ext#", "Other", "x", "", "", 2, true},
};

}  // namespace

TEST_CASE("each history gives rows of its four columns, in order, and shows progress") {
    for (const AreaCase& planted : kCases) DemandRowsAndProgress(planted);
}

TEST_CASE("a history that does not exist gives neither rows nor progress") {
    const CScratchRegistry registry;
    for (const Check check : kChecks) {
        CRecordingView view;
        CHECK(view.Run(check).inTime);
        CHECK(view.Events().empty());
    }
}

TEST_CASE("an empty history gives no rows") {
    CScratchRegistry registry;
    for (const AreaCase& planted : kCases) (void)registry.Add(HKEY_CURRENT_USER, planted.area);
    for (const Check check : kChecks) CHECK(RowsOf(check).empty());
}

TEST_CASE("a history that may only be read is not examined") {
    for (const AreaCase& planted : kCases) DemandNothingWithoutAccess(planted);
}

TEST_CASE("a part of a history that may not be changed or opened is passed over") {
    for (const AreaCase& planted : kCases) DemandClosedEntryPassedOver(planted);
}

TEST_CASE("a cancelled check of a history ends with one message and no further rows") {
    for (const AreaCase& planted : kCases)
        if (planted.rows == 1) DemandEndWhenCanceled(planted);
}

TEST_CASE("a check of a history closes what it opened, at its end and when it is cancelled") {
    for (const AreaCase& planted : kCases) DemandEverythingClosed(planted);
}

TEST_CASE("a history row's write time is its own subkey's, in UTC") {
    CScratchRegistry registry;
    for (const AreaCase& planted : kCases)
        if (planted.timed) CScratchArea(registry, planted.root, planted.area).Add("Entry", planted.name, "x");
    // The lists below an extension are younger than the extension, whose time their rows show.
    CScratchArea extensions(registry, HKEY_CURRENT_USER, kFileExtsArea);
    (void)extensions.Key("Lists\\OpenWithList");
    (void)extensions.Key("Progids\\OpenWithProgids");
    ::Sleep(1'100);
    extensions.Add("Lists\\OpenWithList", "a", "x.exe");
    extensions.Add("Progids\\OpenWithProgids", "a", "x");
    const auto demandTime = [&registry](Check check, const CScratchArea& area, const std::string& below,
                                        HKEY timed) {
        CAPTURE(area.Path(below));
        const std::string time = UtcText(KeyWriteTime(timed));
        REQUIRE(UtcText(KeyWriteTime(registry.Add(HKEY_CURRENT_USER, "Touched"))) != time);
        const std::string rows = TimedRowsOf(check, {area.Path(below)});
        CHECK(rows.starts_with(area.Path(below) + "|" + time + "|"));
    };
    for (const AreaCase& planted : kCases)
        if (planted.timed) {
            CScratchArea area(registry, planted.root, planted.area);
            SetText(area.Key(), "touched", "now");
            demandTime(planted.check, area, "Entry", area.Key("Entry"));
        }
    demandTime(&CheckFileExtsOpenWithList, extensions, "Lists\\OpenWithList", extensions.Key("Lists"));
    demandTime(&CheckFileExts, extensions, "Progids\\OpenWithProgids", extensions.Key("Progids"));
}
