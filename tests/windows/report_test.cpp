#include "analysis/report.h"

#include <doctest/doctest.h>

#include <string>

#include "analysis/channel.h"
#include "tests/support/native_calls.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"
#include "tests/support/write_times.h"

namespace {

constexpr Reason kReason{"It is a test."};
constexpr const char* kGone = "C:\\gone\\app.exe";

/// How many rows a call gives for a reference under a key path.
std::size_t CountRows(const char* keyPath, const std::string& reference) {
    CRecordingView view;
    const WorkerEnd end = view.Run([&] { ReportIfFileMissing(keyPath, "x", reference.c_str()); });
    CHECK(end.inTime);
    CHECK(view.Events().size() == view.Rows().size());
    return view.Rows().size();
}

}  // namespace

TEST_CASE("a row reaches the view with its four texts and its reason, sent and without parameters") {
    CRecordingView view;
    (void)view.Run([] { ReportRow("\\HKEY_USERS\\a", "2009/03/05 07:08:09", "name", "data", kReason); });
    REQUIRE(view.Events().size() == 1);
    const ViewEvent& event = view.Events()[0];
    CHECK(event.message == 0x46F);
    CHECK(event.sent);
    CHECK(event.wParam == 0);
    CHECK(event.lParam == 0);
    CHECK(event.key == "\\HKEY_USERS\\a");
    CHECK(event.writeTime == "2009/03/05 07:08:09");
    CHECK(event.valueName == "name");
    CHECK(event.data == "data");
    CHECK(event.reason == "It is a test.");
}

TEST_CASE("a row without value name and data reference leaves their slots null") {
    CRecordingView view;
    (void)view.Run([] {
        ReportRow("\\HKEY_USERS\\a", "2009/03/05 07:08:09", "name", "data", kReason);
        ReportRow("\\HKEY_USERS\\b", "2009/03/05 07:08:09", nullptr, nullptr, kReason);
    });
    REQUIRE(view.Rows().size() == 2);
    CHECK(view.Rows()[1].key == "\\HKEY_USERS\\b");
    CHECK_FALSE(view.Rows()[1].valueName);
    CHECK_FALSE(view.Rows()[1].data);
}

TEST_CASE("progress reaches the view with the key, sent and without parameters") {
    CRecordingView view;
    (void)view.Run([] { ReportProgress("\\HKEY_USERS\\a"); });
    REQUIRE(view.Events().size() == 1);
    const ViewEvent& event = view.Events()[0];
    CHECK(event.message == 0x470);
    CHECK(event.sent);
    CHECK(event.wParam == 0);
    CHECK(event.lParam == 0);
    CHECK(event.currentKey == "\\HKEY_USERS\\a");
}

TEST_CASE("no text stays in the channel once the view has read it") {
    CRecordingView view;
    bool cleared = false;
    const auto isClear = [] {
        const AnalysisChannel& channel = g_analysisChannel;
        return channel.pszInvalidKey == nullptr && channel.pszValueName == nullptr &&
               channel.pszDataReference == nullptr && channel.pszWriteTime == nullptr &&
               channel.pszCurrentKey == nullptr;
    };
    (void)view.Run([&] {
        ReportRow("key", "time", "name", "data", kReason);
        cleared = isClear();
        ReportProgress("key");
        cleared = cleared && isClear();
    });
    CHECK(view.Events().size() == 2);
    CHECK(cleared);
}

TEST_CASE("a worker waits until the view has handled its message") {
    CRecordingView view;
    std::string order;
    view.onEvent = [&](const ViewEvent&) {
        ::Sleep(50);
        order += "view ";
    };
    (void)view.Run([&] {
        ReportRow("key", "time", "name", "data", kReason);
        order += "worker ";
        ReportProgress("key");
        order += "worker ";
    });
    CHECK(order == "view worker view worker ");
}

TEST_CASE("a poll without a cancel neither tells the view nor waits") {
    CRecordingView view;
    DWORD spent = 0;
    const WorkerEnd end = view.Run([&] {
        const DWORD started = ::GetTickCount();
        for (int round = 0; round < 10; ++round) PollCancel();
        spent = ::GetTickCount() - started;
    });
    CHECK_FALSE(end.canceled);
    CHECK(view.Events().empty());
    CHECK(spent < 1000);
}

TEST_CASE("a poll after a cancel tells the view, sent and without parameters, and ends the work") {
    CRecordingView view;
    view.Cancel();
    bool wentOn = false;
    const WorkerEnd end = view.Run([&] {
        PollCancel();
        wentOn = true;
    });
    CHECK(end.canceled);
    CHECK_FALSE(wentOn);
    REQUIRE(view.Events().size() == 1);
    CHECK(view.Events()[0].message == 0x471);
    CHECK(view.Events()[0].sent);
    CHECK(view.Events()[0].wParam == 0);
    CHECK(view.Events()[0].lParam == 0);
}

TEST_CASE("a reference to a file that is gone gives one row with the key's write time") {
    const CScratchKey key;
    CRecordingView view;
    (void)view.Run([&] { ReportIfFileMissing(key.Path().c_str(), "x", kGone); });
    REQUIRE(view.Events().size() == 1);
    const ViewEvent& row = view.Events()[0];
    CHECK(row.message == kRowMessage);
    CHECK(row.sent);
    CHECK(row.key == key.Path());
    CHECK(row.writeTime == UtcText(KeyWriteTime(key.Get())));
    CHECK(row.valueName == "x");
    CHECK(row.data == kGone);
}

TEST_CASE("the row's write time is the key's own and in UTC") {
    const CLoadedHive hive(0x1C99EE225C16A80);
    CRecordingView view;
    (void)view.Run([] { ReportIfFileMissing(CLoadedHive::SubkeyPath().c_str(), "x", kGone); });
    REQUIRE(view.Rows().size() == 1);
    CHECK(view.Rows()[0].writeTime == "2009/03/07 05:04:09");
}

TEST_CASE("the row shows the reference as it was given, not as it was cut for the second try") {
    const CScratchKey key;
    CRecordingView view;
    (void)view.Run([&] { ReportIfFileMissing(key.Path().c_str(), "x", "C:\\gone\\app.exe|y"); });
    CHECK(view.RowLines() == "x|C:\\gone\\app.exe|y\n");
}

TEST_CASE("a reference without a key path gives no row") { CHECK(CountRows(nullptr, kGone) == 0); }

TEST_CASE("a reference to a file, folder or program that exists gives no row") {
    const CScratchKey key;
    const CScratchFolder folder;
    CHECK(CountRows(key.Path().c_str(), folder.AddFile("a.dll")) == 0);
    CHECK(CountRows(key.Path().c_str(), folder.Path()) == 0);
    CHECK(CountRows(key.Path().c_str(), TheWindowsFolder() + "\\notepad.exe|x") == 0);
    CHECK(CountRows(key.Path().c_str(), folder.Path() + "\\b.dll") == 1);
}

TEST_CASE("an unexpanded Windows folder variable is reported though the file exists behind it") {
    const CScratchKey key;
    CHECK(CountRows(key.Path().c_str(), "%SystemRoot%\\notepad.exe") == 1);
}

TEST_CASE("a key under no known root, or that cannot be opened or queried, gives no row") {
    CScratchKey key;
    CHECK(CountRows(key.Path().c_str(), kGone) == 1);
    CHECK(CountRows("\\HKEY_CURRENT_USER", kGone) == 1);
    CHECK(CountRows(("\\HKCU\\" + key.Subkey()).c_str(), kGone) == 0);
    CHECK(CountRows(("\\hkey_current_user\\" + key.Subkey()).c_str(), kGone) == 0);
    CHECK(CountRows((key.Path() + "\\absent").c_str(), kGone) == 0);
    key.AddLink("unreadable", kUnreadableKey);
    CHECK(CountRows((key.Path() + "\\unreadable").c_str(), kGone) == 0);
    key.Restrict(key.Get(), KEY_READ);
    CHECK(CountRows(key.Path().c_str(), kGone) == 1);
    key.Restrict(key.Get(), 0);
    CHECK(CountRows(key.Path().c_str(), kGone) == 0);
}

TEST_CASE("reporting leaves no handle open") {
    const CScratchKey key;
    CRecordingView view;
    std::size_t before = 0;
    std::size_t after = 0;
    (void)view.Run([&] {
        ReportIfFileMissing(key.Path().c_str(), "x", kGone);
        before = OwnHandles().size();
        for (int round = 0; round < 10; ++round) ReportIfFileMissing(key.Path().c_str(), "x", kGone);
        after = OwnHandles().size();
    });
    CHECK(view.Rows().size() == 11);
    CHECK(after == before);
}
