// Histories kept by file type: opened and saved files, recent documents.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/history/history_checks.h"
#include "area_cases.h"
#include "history_areas.h"
#include "platform/owners.h"
#include "tests/support/call_hook.h"

namespace {

struct History : OneArea {
    explicit History(const char* path) : OneArea(HKEY_CURRENT_USER, path) {}
};

using EnumValueCall = LSTATUS(WINAPI*)(HKEY, DWORD, LPSTR, LPDWORD, LPDWORD, LPDWORD, LPBYTE, LPDWORD);

FARPROC g_enumValue = nullptr;
int g_defaultsRead = 0;
int g_cancelAt = 0;
const CRecordingView* g_canceledView = nullptr;

/// Counts how often a value without a name was read, and cancels the view's analysis at one of these reads.
LSTATUS WINAPI CountDefaults(HKEY key, DWORD index, LPSTR name, LPDWORD nameBytes, LPDWORD reserved,
                             LPDWORD type, LPBYTE data, LPDWORD dataBytes) {
    const auto call = reinterpret_cast<EnumValueCall>(reinterpret_cast<void*>(g_enumValue));
    const LSTATUS result = call(key, index, name, nameBytes, reserved, type, data, dataBytes);
    if (result == ERROR_SUCCESS && name[0] == '\0') ++g_defaultsRead;
    if (g_canceledView != nullptr && g_defaultsRead == g_cancelAt) g_canceledView->Cancel();
    return result;
}

/// Has CountDefaults called for each value that is read.
class CCountedDefaults {
public:
    CCountedDefaults()
        : m_hook("RegEnumValueA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&CountDefaults))) {
        g_enumValue = m_hook.Before();
        g_defaultsRead = 0;
    }
    ~CCountedDefaults() { g_canceledView = nullptr; }
    CCountedDefaults(const CCountedDefaults&) = delete;
    CCountedDefaults& operator=(const CCountedDefaults&) = delete;

    void CancelAt(int read, const CRecordingView& view) {
        g_cancelAt = read;
        g_canceledView = &view;
    }

private:
    CCallHook m_hook;
};

}  // namespace

TEST_CASE("opened files by type: every named value is reported, text data are shown") {
    History one(kOpenSaveArea);
    one.area.Add("txt", "a", "C:\\a.txt");
    one.area.Add("txt", "b", "C:\\b.txt", REG_EXPAND_SZ);
    one.area.Add("txt", "c", "C:\\c.txt", REG_BINARY);
    one.area.Add("txt", "MRUList", "abc");
    CHECK(RowsOf(&CheckOpenSaveMru) ==
          Lines({one.area.Timed("txt", "a", "C:\\a.txt"), one.area.Timed("txt", "b", ""),
                 one.area.Timed("txt", "c", ""), one.area.Timed("txt", "MRUList", "abc")}));
}

TEST_CASE("opened files by type: what does not fit the buffers is passed over") {
    History one(kOpenSaveArea);
    const auto text = [](std::size_t length) { return std::string(length, 'x'); };
    one.area.Add("txt", "a249", text(248));
    one.area.Add("txt", "a250", text(249));
    one.area.Add("txt", "a251", text(250));
    one.area.Add("txt", "n" + text(248), "C:\\n.txt");
    one.area.Add("txt", "n" + text(249), "C:\\n.txt");
    one.area.Add("txt", "z", "C:\\z.txt");
    CHECK(RowsOf(&CheckOpenSaveMru) ==
          Lines({one.area.Timed("txt", "a249", text(248)), one.area.Timed("txt", "a250", text(249)),
                 one.area.Timed("txt", "n" + text(248), "C:\\n.txt"),
                 one.area.Timed("txt", "z", "C:\\z.txt")}));
}

TEST_CASE("opened files: the list of all files comes before the types") {
    History one(kOpenSaveArea);
    one.area.Add("", "z", "C:\\z.txt");
    one.area.Add("a", "a", "C:\\a.txt");
    CHECK(RowsOf(&CheckOpenSaveMru) ==
          Lines({one.area.Untimed("", "z", "C:\\z.txt"), one.area.Timed("a", "a", "C:\\a.txt")}));
}

TEST_CASE("a type with a default value is read again 1,000 times and given up, and the next type follows") {
    History one(kOpenSaveArea);
    one.area.Add("aaa", "", "default");
    one.area.Add("aaa", "behind", "C:\\behind.txt");
    one.area.Add("bbb", "a", "C:\\a.txt");
    std::string rows;
    {
        const CCountedDefaults counted;
        rows = RowsOf(&CheckOpenSaveMru);
    }
    CHECK(g_defaultsRead == 1'001);
    CHECK(rows == Lines({one.area.Timed("bbb", "a", "C:\\a.txt")}));
}

TEST_CASE("a cancel is noticed while a default value is read again and again") {
    History one(kOpenSaveArea);
    one.area.Add("aaa", "", "default");
    CRecordingView view;
    CCountedDefaults counted;
    counted.CancelAt(500, view);
    const WorkerEnd end = view.Run(&CheckOpenSaveMru);
    CHECK(g_defaultsRead == 500);
    CHECK(end.canceled);
    CHECK(view.Count(kCanceledMessage) == 1);
    CHECK(view.Events().back().message == kCanceledMessage);
}

TEST_CASE("recent documents by type: a type with values gives one row per named value") {
    History one(kRecentDocsArea);
    one.area.Add(".txt", "0", "x", REG_BINARY);
    one.area.Add(".txt", "1", "x");
    one.area.Add(".txt", "MRUListEx", "x", REG_BINARY);
    one.area.Add(".txt", "", "default");
    CHECK(RowsOf(&CheckRecentDocsByType) ==
          Lines({one.area.Timed(".txt", "0", ""), one.area.Timed(".txt", "1", ""),
                 one.area.Timed(".txt", "MRUListEx", "")}));
}

TEST_CASE("recent documents by type: a type that holds nothing is reported itself") {
    History one(kRecentDocsArea);
    (void)one.area.Key(".a");
    one.area.Add(".b", "", "");
    one.area.Add(".c", "", "not empty");
    CHECK(RowsOf(&CheckRecentDocsByType) ==
          Lines({one.area.Timed(".a", "", ""), one.area.Timed(".b", "", "")}));
}

TEST_CASE("recent documents by type: a type with subkeys is passed over unless its whole tree is empty") {
    History one(kRecentDocsArea);
    one.area.Add(".a", "0", "x");
    (void)one.area.Key(".a\\sub");
    (void)one.area.Key(".b\\sub\\deeper");
    one.area.Add(".c\\sub", "x", "");
    CHECK(RowsOf(&CheckRecentDocsByType) == Lines({one.area.Timed(".b", "", "")}));
}

TEST_CASE("recent documents by type: the list's own values are another check's") {
    History one(kRecentDocsArea);
    one.area.Add("", "0", "x");
    one.area.Add(".txt", "1", "x");
    CHECK(RowsOf(&CheckRecentDocsByType) == Lines({one.area.Timed(".txt", "1", "")}));
    CHECK(RowsOf(&CheckRecentDocs) == Lines({one.area.Untimed("", "0", "")}));
}

TEST_CASE("recent documents by type: names of up to 99 characters are reported, data of any size") {
    History one(kRecentDocsArea);
    for (const std::size_t length : {98U, 99U, 100U, 101U})
        one.area.Add(".txt", std::string(length, 'n'), "x");
    SetBytes(one.area.Key(".txt"), "z", REG_BINARY, std::string(100'000, 'x'));
    CHECK(RowsOf(&CheckRecentDocsByType) ==
          Lines({one.area.Timed(".txt", std::string(98, 'n'), ""),
                 one.area.Timed(".txt", std::string(99, 'n'), ""), one.area.Timed(".txt", "z", "")}));
}

TEST_CASE("recent documents by type: a cancel between two values of a type is noticed") {
    History one(kRecentDocsArea);
    one.area.Add(".txt", "0", "x");
    one.area.Add(".txt", "1", "x");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckRecentDocsByType) == Lines({one.area.Timed(".txt", "0", "")}));
}

TEST_CASE("opened files by type: a cancel between two values of a type is noticed") {
    History one(kOpenSaveArea);
    one.area.Add("txt", "a", "x");
    one.area.Add("txt", "b", "x");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckOpenSaveMru) == Lines({one.area.Timed("txt", "a", "x")}));
}
