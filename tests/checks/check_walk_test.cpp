#include "analysis/check_walk.h"

#include <doctest/doctest.h>

#include "check_support.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/write_times.h"

TEST_CASE("the scratch registry stands in for all three roots, and only while it lives") {
    {
        CScratchRegistry registry;
        registry.AddText(HKEY_CLASSES_ROOT, "a", "x", "1");
        registry.AddText(HKEY_CURRENT_USER, "Software\\b", "x", "2");
        const CUniqueKey machine = OpenForAll(HKEY_LOCAL_MACHINE, "SOFTWARE\\Classes\\a");
        CHECK(QueryText(machine.Get(), "x", 10).text == "1");
        const CUniqueKey user = OpenForAll(HKEY_CURRENT_USER, "Software\\b");
        CHECK(QueryText(user.Get(), "x", 10).text == "2");
        CHECK_FALSE(static_cast<bool>(OpenForAll(HKEY_CLASSES_ROOT, "CLSID")));
    }
    CHECK(static_cast<bool>(OpenForAll(HKEY_CLASSES_ROOT, "CLSID")));
    CHECK_FALSE(static_cast<bool>(OpenForAll(HKEY_CURRENT_USER, "Software\\b")));
}

namespace {

/// The subkeys that a walk visits, as lines "name|path".
std::string VisitedBy(CRecordingView& view, const CScratchKey& key, const SubkeyWalk& walk,
                      const std::string& stopAt = {}) {
    std::string visits;
    const WorkerEnd end = view.Run([&] {
        ForEachSubkeyOf(
            key.Get(), key.Path(),
            [&](const Subkey& subkey) {
                visits += std::string(subkey.name) + "|" + subkey.path + "\n";
                return subkey.name == stopAt ? Walk::Stop : Walk::Next;
            },
            walk);
    });
    CHECK(end.inTime);
    return visits;
}

}  // namespace

TEST_CASE("a walk visits every subkey, shows it, and tells its write time") {
    CScratchKey key;
    const HKEY child = key.Add("a");
    key.Add("b");
    CRecordingView view;
    CHECK(VisitedBy(view, key, {"\\Tail"}) ==
          "a|" + key.Path() + "\\a\\Tail\nb|" + key.Path() + "\\b\\Tail\n");
    CHECK(view.Progress() == std::vector<std::string>{key.Path() + "\\a\\Tail", key.Path() + "\\b\\Tail"});
    std::string time;
    (void)view.Run([&] {
        ForEachSubkeyOf(key.Get(), key.Path(), [&](const Subkey& subkey) {
            if (subkey.name == std::string("a")) time = subkey.writeTime;
        });
    });
    CHECK(time == UtcText(KeyWriteTime(child)));
}

TEST_CASE("a walk passes over names that do not fit, and goes on behind them") {
    CScratchKey key;
    for (const std::string& name : {std::string(9, 'a'), std::string(10, 'b'), std::string("c")})
        key.Add(name);
    CRecordingView view;
    CHECK(VisitedBy(view, key, {"", 10, false}) == std::string(9, 'a') + "|" + key.Path() + "\\" +
                                                       std::string(9, 'a') + "\nc|" + key.Path() + "\\c\n");
    CHECK(view.Progress().empty());
}

TEST_CASE("a walk ends where its visitor says so") {
    CScratchKey key;
    for (const char* name : {"a", "b", "c"}) key.Add(name);
    CRecordingView view;
    CHECK(VisitedBy(view, key, {}, "b") == "a|" + key.Path() + "\\a\nb|" + key.Path() + "\\b\n");
}

TEST_CASE("a walk polls before it visits, also where the name does not fit") {
    CScratchKey key;
    key.Add("a");
    CRecordingView view;
    view.Cancel();
    CHECK(VisitedBy(view, key, {}).empty());
    REQUIRE(view.Events().size() == 1);
    CHECK(view.Events()[0].message == kCanceledMessage);
    view.Forget();
    CHECK(VisitedBy(view, key, {"", 1}).empty());
    CHECK(view.Count(kCanceledMessage) == 1);
}

TEST_CASE("a walk over values passes too large ones over, polls before each, and ends on demand") {
    CScratchKey key;
    SetText(key.Get(), "a", "1");
    SetText(key.Get(), "b", std::string(300, 'x'));
    SetText(key.Get(), "c", "3");
    SetText(key.Get(), "d", "4");
    CRecordingView view;
    std::string names;
    const auto collect = [&](const std::string& stopAt) {
        names.clear();
        return view.Run([&] {
            ForEachValueOf(key.Get(), {kValueNameBytes, kValueDataBytes}, [&](const CValueReader& value) {
                names += value.Name();
                return value.Name() == stopAt ? Walk::Stop : Walk::Next;
            });
        });
    };
    CHECK_FALSE(collect("").canceled);
    CHECK(names == "acd");
    CHECK_FALSE(collect("c").canceled);
    CHECK(names == "ac");
    view.Cancel();
    CHECK(collect("").canceled);
    CHECK(names.empty());
}

TEST_CASE("a walk over a key that is deleted meanwhile ends") {
    CScratchKey key;
    const HKEY child = key.Add("a");
    SetText(child, "x", "1");
    CRecordingView view;
    int visits = 0;
    const WorkerEnd end = view.Run([&] {
        ForEachValueOf(child, {kValueNameBytes, kValueDataBytes}, [&](const CValueReader&) {
            ++visits;
            ::RegDeleteKeyA(key.Get(), "a");
        });
    });
    CHECK(end.inTime);
    CHECK(visits == 1);
}

TEST_CASE("a key opens for all access or not at all") {
    CScratchKey key;
    CHECK(static_cast<bool>(OpenForAll(key.Get(), "")));
    CHECK_FALSE(static_cast<bool>(OpenForAll(key.Get(), "absent")));
    key.Restrict(key.Add("readonly"), KEY_READ);
    CHECK_FALSE(static_cast<bool>(OpenForAll(key.Get(), "readonly")));
}

TEST_CASE("a path is missing when neither a file nor a folder has its name") {
    const CScratchFolder folder;
    CHECK_FALSE(PathIsMissing(folder.Path()));
    CHECK_FALSE(PathIsMissing(folder.AddFile("x")));
    CHECK(PathIsMissing(folder.Path() + "\\y"));
    CHECK(PathIsMissing(""));
    CHECK(PathIsMissing("%SystemRoot%"));
}
