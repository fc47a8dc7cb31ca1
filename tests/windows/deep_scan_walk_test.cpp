#include <doctest/doctest.h>

#include <algorithm>
#include <string>

#include "analysis/channel.h"
#include "scan_support.h"
#include "tests/support/native_calls.h"

namespace {

/// The scan's messages as lines: a key's path without the scratch key's, or "= " and a row.
std::string Story(const CRecordingView& view, const CScratchKey& key) {
    std::string story;
    for (const ViewEvent& event : view.Events())
        if (event.message == kProgressMessage)
            story += "[" + event.currentKey->substr(key.Path().size()) + "]\n";
        else if (event.message == kRowMessage)
            story += "= " + *event.valueName + "|" + *event.data + "\n";
        else
            story += "message " + std::to_string(event.message) + "\n";
    return story;
}

}  // namespace

TEST_CASE("progress is sent once per value and once for each key's end, rows behind their value's progress") {
    CScratchKey key;
    SetText(key.Get(), "a", "C:\\gone\\1");
    SetText(key.Get(), "b", "nothing");
    SetText(key.Add("k"), "C:\\gone\\2", "C:\\gone\\3");
    key.Add("k\\deep");
    SetText(key.Add("l"), "", "C:\\gone\\4");
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    CHECK(Story(view, key) ==
          "[]\n= a|C:\\gone\\1\n[]\n[]\n"
          "[\\k]\n= C:\\gone\\2|C:\\gone\\3\n= C:\\gone\\2|C:\\gone\\2\n[\\k]\n"
          "[\\k\\deep]\n"
          "[\\l]\n= |C:\\gone\\4\n[\\l]\n");
}

TEST_CASE("every message of a scan is sent without parameters, and progress is cleared before the rows") {
    CScratchKey key;
    SetText(key.Get(), "a", "C:\\gone\\1");
    CRecordingView view;
    view.onEvent = [](const ViewEvent& event) {
        if (event.message == kRowMessage) CHECK(g_analysisChannel.pszCurrentKey == nullptr);
    };
    CHECK(Scan(view, key).inTime);
    CHECK(view.Events().size() == 3);
    for (const ViewEvent& event : view.Events()) {
        CHECK(event.sent);
        CHECK(event.wParam == 0);
        CHECK(event.lParam == 0);
    }
}

TEST_CASE("values that fail to be read also count for progress") {
    CScratchKey key;
    SetBytes(key.Get(), "a", REG_BINARY, std::string(300, 'd'));
    SetText(key.Get(), std::string(300, 'n'), "");
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    CHECK(view.Progress().size() == 3);
}

TEST_CASE("a subkey that cannot be opened is passed over, and one that may only be read is walked") {
    CScratchKey key;
    for (const char* name : {"a", "b", "c"}) SetText(key.Add(name), "x", std::string("C:\\gone\\") + name);
    key.Restrict(key.Add("a"), 0);
    key.Restrict(key.Add("b"), KEY_READ);
    CHECK(RowsOf(key) == "x|C:\\gone\\b\nx|C:\\gone\\c\n");
}

TEST_CASE("a subkey whose name holds a zero is passed over, and so is such a value") {
    CScratchKey key;
    const CUniqueKey hostile = CreateKeyByCountedName(key.Get(), std::wstring(L"a\0b", 3));
    REQUIRE(static_cast<bool>(hostile));
    SetText(hostile.Get(), "x", "C:\\gone\\hostile");
    // What is left of these names leads to another value.
    REQUIRE(SetTextByCountedName(key.Get(), std::wstring(L"C:\\gone\\v\0w", 11), std::wstring(L"\0", 1)));
    REQUIRE(SetTextByCountedName(key.Get(), std::wstring(L"\0w", 2), L"C:\\gone\\w"));
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    CHECK(RowsOf(key) == "x|C:\\gone\\z\n");
    CHECK(DeleteOpenKey(hostile.Get()));
}

TEST_CASE("subkeys whose names begin with a zero do not have their parent walked again") {
    CScratchKey key;
    std::vector<CUniqueKey> hostile;
    for (const wchar_t letter : {L'a', L'b'})
        hostile.push_back(CreateKeyByCountedName(key.Get(), std::wstring{L'\0', letter}));
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    CHECK(RowsOf(key) == "x|C:\\gone\\z\n");
    for (const CUniqueKey& subkey : hostile) CHECK(DeleteOpenKey(subkey.Get()));
}

TEST_CASE("a key whose path would not fit 1000 bytes is passed over with its subtree, not cut") {
    CScratchKey key;
    HKEY parent = key.Get();
    std::string path = key.Path();
    while (path.size() < 800) {
        const std::string name(std::min<std::size_t>(800 - path.size(), 101) - 1, 'k');
        if (name.empty()) break;
        parent = key.Add(parent, name);
        path += "\\" + name;
    }
    const std::string fits(999 - path.size() - 1, 'f');  // with a terminator 1000 bytes
    key.Add(parent, fits);
    key.Add(key.Add(parent, fits + "f"), "below");
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    CHECK(view.ProgressOf(path) == 1);
    CHECK(view.ProgressOf(path + "\\" + fits) == 1);
    for (const std::string& shown : view.Progress()) CHECK(shown.size() <= 999);
}

TEST_CASE("a dead reference under a path that names no key to ask for its write time gives no row") {
    CScratchKey key;
    SetText(key.Get(), "x", "C:\\gone\\a");
    for (const std::string& path : {"\\HKCU\\" + key.Subkey(), key.Path() + "-absent"}) {
        CRecordingView view;
        CHECK(Scan(view, key.Get(), path).inTime);
        CHECK(view.ProgressOf(path) == 2);
        CHECK(view.Rows().empty());
    }
}

TEST_CASE("a link to its own parent ends, and the keys behind it are still walked") {
    CScratchKey key;
    key.AddLink("loop", ObjectName(key.Get()));
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    CRecordingView view;
    const WorkerEnd end = Scan(view, key);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.ProgressOf(key.Path() + "\\loop") == 1);
    CHECK(view.ProgressOf(key.Path() + "\\loop\\loop") == 0);
    CHECK(view.ProgressOf(key.Path() + "\\z") == 2);
    CHECK(view.Events().back().currentKey == key.Path() + "\\z");
}

TEST_CASE("a key that answers every call as an invalid handle is left after one call") {
    CScratchKey key;
    key.AddLink("m", kUnreadableKey);
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    CHECK(view.ProgressOf(key.Path() + "\\m") == 1);
    CHECK(view.RowLines() == "x|C:\\gone\\z\n");
}

TEST_CASE("a key deleted while its values are walked ends its walk") {
    CScratchKey key;
    const HKEY victim = key.Add("victim");
    for (const char* name : {"a", "b", "c"}) SetText(victim, name, "");
    key.Add("victim\\child");
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    CRecordingView view;
    const std::string path = key.Path() + "\\victim";
    view.onEvent = [&](const ViewEvent&) {
        if (view.ProgressOf(path) == 2 && view.Events().back().currentKey == path)
            CScratchKey::DeleteTree(victim);
    };
    CHECK(Scan(view, key).inTime);
    CHECK(view.ProgressOf(path) == 2);
    CHECK(view.ProgressOf(path + "\\child") == 0);
}

TEST_CASE("a key deleted while its subkeys are walked ends its walk") {
    CScratchKey key;
    const HKEY victim = key.Add("victim");
    for (const char* name : {"a", "b", "c"}) key.Add(std::string("victim\\") + name);
    CRecordingView view;
    const std::string path = key.Path() + "\\victim";
    view.onEvent = [&](const ViewEvent& event) {
        if (event.currentKey == path + "\\a") CScratchKey::DeleteTree(victim);
    };
    CHECK(Scan(view, key).inTime);
    CHECK(view.ProgressOf(path + "\\a") == 1);
    CHECK(view.ProgressOf(path + "\\b") == 0);
}

TEST_CASE(
    "levels that can be reached by several names, or by several links, are walked once or a few times") {
    CScratchKey key;
    SetText(key.Add("z"), "x", "C:\\gone\\z");
    std::vector<CUniqueKey> hidden;
    HKEY level = key.Add("a");
    std::string path = "a\\";
    for (int depth = 0; depth < 40; ++depth) {
        // They read as "a", "a" and "a\\a" in narrow calls.
        for (const std::wstring& twin : {std::wstring(L"a\0", 2), std::wstring(L"\xFF41"),
                                         std::wstring(L"a\xFF3C"
                                                      L"a")})
            hidden.push_back(CreateKeyByCountedName(level, twin));
        for (const char* link : {"l", "r"}) key.AddLink(path + link, ObjectName(key.Add("a")));
        path += "a\\";
        level = key.Add(level, "a");
    }
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    CHECK(view.ProgressOf(key.Path() + "\\a\\a\\a") == 1);
    CHECK(view.RowLines() == "x|C:\\gone\\z\n");
    while (!hidden.empty()) {
        DeleteOpenKey(hidden.back().Get());
        hidden.pop_back();
    }
}

TEST_CASE("a key that only pretends to be a link is walked all the same") {
    CScratchKey key;
    const HKEY pretender = key.Add("false");
    SetBytes(pretender, "SymbolicLinkValue", REG_LINK, "x");
    SetText(pretender, "x", "C:\\gone\\x");
    CHECK(RowsOf(key) == "x|C:\\gone\\x\n");
}
