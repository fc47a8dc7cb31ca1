#include <doctest/doctest.h>

#include <string>

#include "analysis/report.h"
#include "registry/key_tree.h"
#include "tests/support/native_calls.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

namespace {

// A poll is a plain function, so what it does for a test stands here.
int g_polls = 0;
int g_actAt = 0;
void (*g_act)() = nullptr;
HKEY g_victim = nullptr;

void CountingPoll() {
    if (++g_polls == g_actAt) g_act();
}

int CountPolls(const CScratchKey& key) {
    g_polls = g_actAt = 0;
    CHECK(KeyTreeIsEmpty(key.Get(), key.Path(), &CountingPoll));
    return g_polls;
}

/// Whether the walk answers "empty" after the act was done at one of its polls.
bool IsEmptyWithActAt(const CScratchKey& key, int poll, void (*act)()) {
    g_polls = 0;
    g_actAt = poll;
    g_act = act;
    return KeyTreeIsEmpty(key.Get(), key.Path(), &CountingPoll);
}

}  // namespace

TEST_CASE("the cancel poll runs before each value and before each subkey, the ends included") {
    CScratchKey key;
    CHECK(CountPolls(key) == 2);
    SetText(key.Get(), "", "");
    CHECK(CountPolls(key) == 3);
    key.Add("a");
    CHECK(CountPolls(key) == 3 + 1 + 2);
    SetText(key.Add("b"), "", "");
    CHECK(CountPolls(key) == 3 + 1 + 2 + 1 + 3);
}

TEST_CASE("a walk cancelled in the value loop tells the view once and ends") {
    CScratchKey key;
    SetText(key.Get(), "x", "");
    CRecordingView view;
    view.Cancel();
    bool answered = false;
    const WorkerEnd end = view.Run([&] {
        (void)KeyTreeIsEmpty(key.Get(), key.Path(), &PollCancel);
        answered = true;
    });
    CHECK(end.canceled);
    CHECK_FALSE(answered);
    REQUIRE(view.Events().size() == 1);
    CHECK(view.Events()[0].message == kCanceledMessage);
    CHECK(view.Events()[0].sent);
}

TEST_CASE("a walk cancelled in the subkey loop tells the view once and ends") {
    CScratchKey key;
    key.Add("a");
    static CRecordingView* cancelled = nullptr;
    CRecordingView view;
    cancelled = &view;
    g_polls = 0;
    g_act = [] { cancelled->Cancel(); };
    g_actAt = 2;  // the first is the value loop's, which ends there
    const WorkerEnd end = view.Run([&] {
        (void)KeyTreeIsEmpty(key.Get(), key.Path(), [] {
            CountingPoll();
            PollCancel();
        });
    });
    CHECK(end.canceled);
    CHECK(g_polls == 2);
    CHECK(view.Count(kCanceledMessage) == 1);
}

TEST_CASE("a link to its own parent ends, and so does the way into it") {
    CScratchKey key;
    key.AddLink("loop", ObjectName(key.Get()));
    CRecordingView view;  // only for its time limit
    bool empty = false;
    const WorkerEnd end = view.Run([&] { empty = KeyTreeIsEmpty(key.Get(), key.Path(), &PollCancel); });
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(empty);

    SetText(key.Add("z"), "x", "");
    const WorkerEnd again = view.Run([&] { empty = KeyTreeIsEmpty(key.Get(), key.Path(), &PollCancel); });
    CHECK(again.inTime);
    CHECK_FALSE(empty);
}

TEST_CASE("a tree of 200 levels is walked to its end") {
    CScratchKey key;
    HKEY deepest = key.Get();
    for (int level = 0; level < 200; ++level) deepest = key.Add(deepest, "k");
    CHECK(KeyTreeIsEmpty(key.Get(), key.Path(), [] {}));
    SetText(deepest, "x", "");
    CHECK_FALSE(KeyTreeIsEmpty(key.Get(), key.Path(), [] {}));
}

TEST_CASE("a tree that goes on below the deepest level is not taken for empty") {
    CScratchKey key;
    const std::string deepest(513, '\\');  // a path of 512 names below the root
    CHECK(KeyTreeIsEmpty(key.Get(), deepest, [] {}));
    key.Add("k");
    CHECK(KeyTreeIsEmpty(key.Get(), deepest.substr(1), [] {}));
    CHECK_FALSE(KeyTreeIsEmpty(key.Get(), deepest, [] {}));
}

TEST_CASE("a key deleted under the walk ends it, in the value loop and in the subkey loop") {
    for (int poll : {1, 2}) {
        CAPTURE(poll);
        CScratchKey key;
        g_victim = key.Add("victim");
        CRecordingView view;
        bool empty = false;
        const WorkerEnd end = view.Run([&] {
            g_polls = 0;
            g_actAt = poll;
            g_act = [] { DeleteOpenKey(g_victim); };
            empty = KeyTreeIsEmpty(g_victim, key.Path() + "\\victim", [] {
                CountingPoll();
                PollCancel();
            });
        });
        CHECK(end.inTime);
        CHECK(empty);
        CHECK(g_polls == 2);
    }
}

TEST_CASE("a key that answers every call as an invalid handle ends the walk") {
    CScratchKey key;
    key.AddLink("unreadable", kUnreadableKey);
    CRecordingView view;
    bool empty = false;
    const WorkerEnd end = view.Run([&] { empty = KeyTreeIsEmpty(key.Get(), key.Path(), &PollCancel); });
    CHECK(end.inTime);
    CHECK(empty);
}

TEST_CASE("a value set during the walk, before its call, is still seen") {
    CScratchKey key;
    g_victim = key.Get();
    CHECK_FALSE(IsEmptyWithActAt(key, 1, [] { SetText(g_victim, "x", ""); }));
}

TEST_CASE("a walk leaves no handle open, finished or cancelled") {
    CScratchKey key;
    key.Add("a\\b\\c");
    const std::size_t before = OwnHandles().size();
    CHECK(KeyTreeIsEmpty(key.Get(), key.Path(), [] {}));
    CHECK(OwnHandles().size() == before);
    CHECK_THROWS_AS((void)IsEmptyWithActAt(key, 5, [] { throw CAnalysisCanceled(); }), CAnalysisCanceled);
    CHECK(OwnHandles().size() == before);
}

TEST_CASE("a tree whose links lead twice to each next key is walked to its end") {
    CScratchKey key;
    for (int step = 0; step < 40; ++step) {
        const std::string name = "step" + std::to_string(step);
        key.Add(name);
        for (const char* way : {"\\l", "\\r"})
            key.AddLink(name + way, ObjectName(key.Add("step" + std::to_string(step + 1))));
    }
    CRecordingView view;  // only for its time limit
    bool empty = false;
    CHECK(view.Run([&] { empty = KeyTreeIsEmpty(key.Get(), key.Path(), &PollCancel); }).inTime);
    CHECK(empty);
}

TEST_CASE("a key that only pretends to be a link is not empty") {
    CScratchKey key;
    SetBytes(key.Add("pretender"), "SymbolicLinkValue", REG_LINK, "x");
    CHECK_FALSE(KeyTreeIsEmpty(key.Get(), key.Path(), [] {}));
}
