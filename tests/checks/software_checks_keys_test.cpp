#include <doctest/doctest.h>

#include "analysis/classes/software_checks.h"
#include "check_support.h"

TEST_CASE("software keys that hold nothing at any level are reported, the user's first") {
    CScratchRegistry registry;
    registry.Add(HKEY_LOCAL_MACHINE, "Software\\A");
    registry.Add(HKEY_CURRENT_USER, "Software\\C\\D");
    registry.AddText(HKEY_CURRENT_USER, "Software\\B", "", "");
    CHECK(RowsOf(&CheckSoftwareKeys) ==
          Lines({"\\HKEY_CURRENT_USER\\Software\\B|timed||", "\\HKEY_CURRENT_USER\\Software\\C|timed||",
                 "\\HKEY_LOCAL_MACHINE\\Software\\A|timed||"}));
}

TEST_CASE("software keys that hold a value at any level are not reported") {
    CScratchRegistry registry;
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        registry.AddText(root, "Software\\A", "", "x");
        registry.AddText(root, "Software\\B\\C\\D", "x", "");
    }
    CHECK(RowsOf(&CheckSoftwareKeys).empty());
}

TEST_CASE("Classes is never reported, Policies never for the user") {
    CScratchRegistry registry;  // the machine's Classes is there already
    registry.Add(HKEY_CURRENT_USER, "Software\\Classes");
    registry.Add(HKEY_CURRENT_USER, "Software\\Policies");
    registry.Add(HKEY_LOCAL_MACHINE, "Software\\Policies");
    CHECK(RowsOf(&CheckSoftwareKeys) == "\\HKEY_LOCAL_MACHINE\\Software\\Policies|timed||\n");
}

TEST_CASE("Classes and Policies are skipped only when spelled so") {
    CScratchRegistry registry;
    for (const char* name : {"classes", "POLICIES", "Classes2"})
        registry.Add(HKEY_CURRENT_USER, std::string("Software\\") + name);
    CHECK(RowsOf(&CheckSoftwareKeys) == Lines({"\\HKEY_CURRENT_USER\\Software\\classes|timed||",
                                               "\\HKEY_CURRENT_USER\\Software\\Classes2|timed||",
                                               "\\HKEY_CURRENT_USER\\Software\\POLICIES|timed||"}));
}

TEST_CASE("a software area that does not open leaves the other") {
    CScratchRegistry registry;
    registry.Add(HKEY_LOCAL_MACHINE, "Software\\A");  // the user has no such area
    CHECK(RowsOf(&CheckSoftwareKeys) == "\\HKEY_LOCAL_MACHINE\\Software\\A|timed||\n");
    registry.Add(HKEY_CURRENT_USER, "Software\\A");
    registry.MakeReadOnly(registry.Add(HKEY_LOCAL_MACHINE, "Software"));
    CHECK(RowsOf(&CheckSoftwareKeys) == "\\HKEY_CURRENT_USER\\Software\\A|timed||\n");
}

TEST_CASE("a software key without write access is passed over") {
    CScratchRegistry registry;
    registry.MakeReadOnly(registry.Add(HKEY_CURRENT_USER, "Software\\A"));
    registry.Add(HKEY_CURRENT_USER, "Software\\B");
    CHECK(RowsOf(&CheckSoftwareKeys) == "\\HKEY_CURRENT_USER\\Software\\B|timed||\n");
}

TEST_CASE("a cancel is noticed inside the tree of one software key") {
    CScratchRegistry registry;
    registry.Add(HKEY_CURRENT_USER, "Software\\A\\B");
    CRecordingView view;
    view.onEvent = [&view](const ViewEvent& event) {
        if (event.message == kProgressMessage) view.Cancel();
    };
    CHECK(view.Run(&CheckSoftwareKeys).canceled);
    CHECK(view.Rows().empty());
    CHECK(view.Progress() == std::vector<std::string>{"\\HKEY_CURRENT_USER\\Software\\A"});
    CHECK(view.Count(kCanceledMessage) == 1);
}
