#include <doctest/doctest.h>

#include <string>

#include "analysis/channel.h"
#include "analysis/report.h"
#include "tests/support/native_calls.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

// What these tests lean on: that they leave nothing behind, and that a runaway worker fails a test.

namespace {

bool KeyExists(HKEY root, const std::string& subkey) {
    CUniqueKey key;
    return ::RegOpenKeyExA(root, subkey.c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
}

}  // namespace

TEST_CASE("a scratch key leaves nothing behind, whatever was put into it") {
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT}) {
        std::string subkey;
        CScratchKey target(root);
        target.Add("stays");
        {
            CScratchKey key(root);
            subkey = key.Subkey();
            SetText(key.Add("a\\b\\c"), "x", "y");
            key.Restrict(key.Add("a\\b"), 0);
            key.Restrict(key.Add("refused"), 0);
            key.AddLink("loop", ObjectName(key.Get()));
            key.AddLink("link", ObjectName(target.Get()));
            CHECK(KeyExists(root, subkey + "\\link\\stays"));
        }
        CHECK_FALSE(KeyExists(root, subkey));
        CHECK(KeyExists(root, target.Subkey() + "\\stays"));
    }
}

TEST_CASE("a scratch folder and a scratch variable leave nothing behind") {
    std::string path;
    {
        const CScratchFolder folder;
        path = folder.AddFolder("a");
        ::SetFileAttributesA(folder.AddFile("a\\b").c_str(), FILE_ATTRIBUTE_READONLY);
        const CScratchVariable variable("VELLUMOR_X", "y");
    }
    CHECK_FALSE(Exists(path));
    char value[8];
    CHECK(::GetEnvironmentVariableA("VELLUMOR_X", value, sizeof value) == 0);
}

TEST_CASE("the recording view tells sent from posted messages and leaves the channel as it was") {
    CRecordingView view;
    const WorkerEnd end = view.Run([] {
        ::SendMessageA(g_analysisChannel.hViewWnd, WM_STAGE1_DONE, 1, 2);
        ::PostMessageA(g_analysisChannel.hViewWnd, WM_STAGE2_DONE, 3, 4);
        throw CAnalysisCanceled();
    });
    CHECK(end.inTime);
    CHECK(end.canceled);
    REQUIRE(view.Events().size() == 2);
    CHECK(view.Events()[0].sent);
    CHECK(view.Events()[0].wParam == 1);
    CHECK_FALSE(view.Events()[1].sent);
    CHECK(view.Events()[1].lParam == 4);
    CHECK(g_analysisChannel.hViewWnd == nullptr);
    CHECK(g_analysisChannel.hCancelEvent == nullptr);
}
