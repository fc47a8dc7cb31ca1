// The cache of program details, whose records hold a path at a fixed place.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>
#include <string_view>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "system_areas.h"
#include "tests/support/call_hook.h"
#include "tests/support/scratch_folder.h"

namespace {

struct ArpCache : OneArea {
    ArpCache() : OneArea(HKEY_LOCAL_MACHINE, kArpCacheArea) {}
    void AddRecord(const std::string& product, const std::string& bytes) {
        SetBytes(area.Key(product), "SlowInfoCache", REG_BINARY, bytes);
    }
    /// The line of a row for a record's path.
    [[nodiscard]] std::string Row(const std::string& product, const std::string& path) const {
        return area.Untimed(product, "SlowInfoCache", path);
    }
};

/// A path as records hold it, without the terminator.
std::string Wide(std::string_view text) {
    std::string bytes;
    for (const char letter : text) bytes.append({letter, '\0'});
    return bytes;
}

std::string Head() { return std::string(28, '\x5A'); }

std::string Record(std::string_view path) { return Head() + Wide(path) + std::string(2, '\0'); }

int g_readsOfData = 0;
FARPROC g_query = nullptr;

/// Answers questions for a size and fails to hand out the data.
LSTATUS WINAPI QuerySizeOnly(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                             LPDWORD bytes) {
    using Query = LSTATUS(WINAPI*)(HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD);
    if (data == nullptr)
        return reinterpret_cast<Query>(reinterpret_cast<void*>(g_query))(key, name, reserved, type, data,
                                                                         bytes);
    ++g_readsOfData;
    return ERROR_ACCESS_DENIED;
}

/// Says that data are larger than any memory, and counts who asks for them all the same.
LSTATUS WINAPI QueryHugeSize(HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE data, LPDWORD bytes) {
    if (data != nullptr) ++g_readsOfData;
    *bytes = 0xFFFFFFF0;
    return data == nullptr ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

}  // namespace

TEST_CASE("a record of a program that is there gives no row") {
    const CScratchFolder scratch;
    ArpCache one;
    one.AddRecord("A", Record(scratch.AddFile("tool.exe")));
    one.AddRecord("B", Record(scratch.Path()) + "and more");
    one.AddRecord("C", Record("C:\\gone\\tool.exe"));
    one.AddRecord("D", Record("%windir%"));
    CHECK(RowsOf(&CheckArpCache) == Lines({one.Row("C", "C:\\gone\\tool.exe"), one.Row("D", "%windir%")}));
}

TEST_CASE("an entry without a record of that very name is reported, and the next one examined") {
    ArpCache one;
    (void)one.area.Key("A");
    one.area.Add("B", "slowinfocache", "x");
    one.AddRecord("C", Record("C:\\gone\\c.exe"));
    CHECK(RowsOf(&CheckArpCache) == Lines({one.area.Untimed("A", "", ""), one.area.Untimed("B", "", ""),
                                           one.Row("C", "C:\\gone\\c.exe")}));
}

TEST_CASE("an empty record ends the check") {
    ArpCache one;
    one.AddRecord("A", Record("C:\\gone\\a.exe"));
    one.AddRecord("B", "");
    one.AddRecord("C", Record("C:\\gone\\c.exe"));
    (void)one.area.Key("D");
    CHECK(RowsOf(&CheckArpCache) == Lines({one.Row("A", "C:\\gone\\a.exe")}));
}

TEST_CASE("a record that cannot be read ends the check") {
    ArpCache one;
    (void)one.area.Key("A");
    one.AddRecord("B", Record("C:\\gone\\b.exe"));
    (void)one.area.Key("C");
    std::string rows;
    {
        const CCallHook hook("RegQueryValueExA",
                             reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&QuerySizeOnly)));
        g_query = hook.Before();
        g_readsOfData = 0;
        rows = RowsOf(&CheckArpCache);
    }
    CHECK(g_readsOfData == 1);
    CHECK(rows == Lines({one.area.Untimed("A", "", "")}));
}

TEST_CASE("a record that no memory can hold ends the check, and not the program") {
    ArpCache one;
    (void)one.area.Key("A");
    one.AddRecord("B", Record("C:\\gone\\b.exe"));
    (void)one.area.Key("C");
    std::string rows;
    {
        const CCallHook hook("RegQueryValueExA",
                             reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&QueryHugeSize)));
        rows = RowsOf(&CheckArpCache);
    }
    CHECK(rows == Lines({one.area.Untimed("A", "", "")}));
}

TEST_CASE("a record too short for a path gives a row without one, and the check goes on") {
    ArpCache one;
    one.AddRecord("A", "x");
    one.AddRecord("B", std::string(27, 'x'));
    one.AddRecord("C", Head());
    one.AddRecord("D", Head() + "x");
    one.AddRecord("E", Head() + std::string(2, '\0'));
    one.AddRecord("F", Head() + Wide("x"));
    CHECK(RowsOf(&CheckArpCache) == Lines({one.Row("A", ""), one.Row("B", ""), one.Row("C", ""),
                                           one.Row("D", ""), one.Row("E", ""), one.Row("F", "x")}));
}

TEST_CASE("a record without a terminator holds a path up to its end") {
    const CScratchFolder scratch;
    ArpCache one;
    one.AddRecord("A", Head() + Wide("C:\\gone\\a.exe"));
    one.AddRecord("B", Head() + Wide("C:\\gone\\b.exe") + "x");  // half a character
    one.AddRecord("C", Head() + Wide(scratch.AddFile("c.exe")));
    CHECK(RowsOf(&CheckArpCache) ==
          Lines({one.Row("A", "C:\\gone\\a.exe"), one.Row("B", "C:\\gone\\b.exe")}));
}

TEST_CASE("the path is shown in the system's code page, and the record's type does not matter") {
    ArpCache one;
    const std::string wide = Head() + Wide("C:\\gone\\") + std::string("\xE4\x00", 2) + std::string(2, '\0');
    SetBytes(one.area.Key("A"), "SlowInfoCache", REG_NONE, wide);
    char shown[8] = "";
    REQUIRE(::WideCharToMultiByte(CP_ACP, 0, L"\u00E4", 1, shown, sizeof shown, nullptr, nullptr) > 0);
    CHECK(RowsOf(&CheckArpCache) == Lines({one.Row("A", "C:\\gone\\" + std::string(shown))}));
}

TEST_CASE("a path is taken up to 259 characters") {
    ArpCache one;
    const auto gone = [](std::size_t length) { return "C:\\gone\\" + std::string(length - 8, 'x'); };
    for (const std::size_t length : {258U, 259U, 260U, 261U, 1'000U})
        one.AddRecord(std::to_string(10'000 + length), Record(gone(length)));
    CHECK(RowsOf(&CheckArpCache) ==
          Lines({one.Row("10258", gone(258)), one.Row("10259", gone(259)), one.Row("10260", gone(259)),
                 one.Row("10261", gone(259)), one.Row("11000", gone(259))}));
}

TEST_CASE("a record far larger than any path is read whole") {
    ArpCache one;
    one.AddRecord("A", Record("C:\\gone\\a.exe") + std::string(100'000, 'x'));
    CHECK(RowsOf(&CheckArpCache) == Lines({one.Row("A", "C:\\gone\\a.exe")}));
}

TEST_CASE("a longer path is reported even where its first 259 characters name a file") {
    const CScratchFolder scratch;
    const std::string folder(200 - scratch.Path().size(), 'd');
    (void)scratch.AddFolder(folder);
    const std::string file = scratch.AddFile(folder + "\\" + std::string(57, 'f'));
    REQUIRE(file.size() == 259);
    ArpCache one;
    one.AddRecord("A", Record(file));
    one.AddRecord("B", Record(file + "f"));
    CRecordingView view;
    CHECK(view.Run(&CheckArpCache).inTime);
    REQUIRE(view.Rows().size() == 1);
    CHECK(view.Rows()[0].key == one.area.Path("B"));
}
