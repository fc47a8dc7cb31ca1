#include <doctest/doctest.h>

#include <string>

#include "scan_support.h"

namespace {

const std::string kUninstall = "Microsoft\\Windows\\CurrentVersion\\Uninstall";
const std::string kSkippedProduct = "{FEF2C100-2CA4-4A6A-A535-07B46117B323}";

/// Scans a key with one subkey as if it stood at a path; whether the subkey was entered.
bool ChildIsEntered(const std::string& parentPath, const std::string& child) {
    CScratchKey key;
    key.Add(child);
    CRecordingView view;
    CHECK(Scan(view, key.Get(), parentPath).inTime);
    CHECK(view.ProgressOf(parentPath) == 1);
    return view.ProgressOf(parentPath + "\\" + child) != 0;
}

}  // namespace

TEST_CASE("a key whose path holds Memory Management is skipped with its subtree") {
    for (const std::string name : {"Memory Management", "x Memory Management y"}) {
        CAPTURE(name);
        CScratchKey key;
        SetText(key.Add(name), "x", "C:\\gone\\a");
        SetText(key.Add(name + "\\b\\c"), "x", "C:\\gone\\c");
        SetText(key.Add("other"), "x", "C:\\gone\\other");
        CRecordingView view;
        CHECK(Scan(view, key).inTime);
        CHECK(view.RowLines() == "x|C:\\gone\\other\n");
        CHECK(view.ProgressOf(key.Path() + "\\" + name) == 0);
        CHECK(view.ProgressOf(key.Path() + "\\" + name + "\\b\\c") == 0);
    }
}

TEST_CASE("a scan that starts under Memory Management returns at once") {
    CScratchKey key;
    SetText(key.Get(), "x", "C:\\gone\\a");
    CRecordingView view;
    CHECK(Scan(view, key.Get(), key.Path() + "\\Memory Management\\a").inTime);
    CHECK(view.Events().empty());
}

TEST_CASE("letter case and spelling count for Memory Management") {
    CScratchKey key;
    for (const std::string name : {"memory management", "MemoryManagement", "Memory  Management"})
        SetText(key.Add(name), "x", "C:\\gone\\a");
    CHECK(RowsOf(key) == "x|C:\\gone\\a\nx|C:\\gone\\a\nx|C:\\gone\\a\n");
}

TEST_CASE("the two listed keys are skipped by their exact path") {
    const std::string software = "\\HKEY_LOCAL_MACHINE\\SOFTWARE";
    CHECK_FALSE(ChildIsEntered(software, "McAfee"));
    CHECK_FALSE(ChildIsEntered(software + "\\" + kUninstall, kSkippedProduct));

    CHECK(ChildIsEntered(software, "McAfee2"));
    CHECK(ChildIsEntered(software, "MCAFEE"));
    CHECK(ChildIsEntered(software + "\\McAfee2", "McAfee"));
    CHECK(ChildIsEntered("\\HKEY_CURRENT_USER\\SOFTWARE", "McAfee"));
    CHECK(ChildIsEntered(software + "\\" + kUninstall, "{fef2c100-2ca4-4a6a-a535-07b46117b323}"));
    CHECK(ChildIsEntered(software + "\\" + kUninstall, kSkippedProduct + "x"));
    CHECK(ChildIsEntered("\\HKEY_CURRENT_USER\\SOFTWARE\\" + kUninstall, kSkippedProduct));
    CHECK(ChildIsEntered(software, kSkippedProduct));
}

TEST_CASE("a listed key is not skipped where the registry spells its path in another letter case") {
    CHECK(ChildIsEntered("\\HKEY_LOCAL_MACHINE\\Software", "McAfee"));
    CHECK(ChildIsEntered("\\HKEY_LOCAL_MACHINE\\Software\\" + kUninstall, kSkippedProduct));
}

TEST_CASE("the subtree of a listed key is skipped with it, and its path as a mere beginning is not") {
    CScratchKey key;
    SetText(key.Add("McAfee\\a"), "x", "C:\\gone\\a");
    CRecordingView view;
    CHECK(Scan(view, key.Get(), "\\HKEY_LOCAL_MACHINE\\SOFTWARE").inTime);
    CHECK(view.Progress().size() == 1);

    view.Forget();
    CHECK(Scan(view, key.Get(), "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\McAfee").inTime);
    CHECK(view.Events().empty());
    CHECK(Scan(view, key.Get(), "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\McAfee\\x").inTime);
    CHECK(view.Progress().size() == 4);
}

TEST_CASE("a dead reference in the real key is reported only by the path that is not listed") {
    const CScratchKey key(HKEY_LOCAL_MACHINE, "Software\\McAfee");
    SetText(key.Get(), "x", "C:\\gone\\a");
    CHECK(RowsOf(key) == "x|C:\\gone\\a\n");
    CRecordingView view;
    CHECK(Scan(view, key.Get(), "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\McAfee").inTime);
    CHECK(view.Events().empty());
}
