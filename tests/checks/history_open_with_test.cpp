// The programs that Explorer offers per file extension.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/history/history_checks.h"
#include "area_cases.h"
#include "history_areas.h"

namespace {

struct FileExts : OneArea {
    FileExts() : OneArea(HKEY_CURRENT_USER, kFileExtsArea) {}
};

std::string Text(std::size_t bytes) { return std::string(bytes - 1, 'x'); }

}  // namespace

TEST_CASE("a list of programs gives a row per named value and one of its own") {
    FileExts one;
    const std::string list = ".a\\OpenWithList";
    one.area.Add(list, "", "default.exe");
    one.area.Add(list, "a", "tool.exe");
    one.area.Add(list, "b", "wide.exe", REG_EXPAND_SZ);
    one.area.Add(list, "c", "");
    one.area.Add(list, "MRUList", "ab");
    CHECK(RowsOf(&CheckFileExtsOpenWithList) ==
          Lines({one.area.Timed(list, "a", "tool.exe"), one.area.Timed(list, "b", "wide.exe"),
                 one.area.Timed(list, "c", ""), one.area.Timed(list, "MRUList", "ab"),
                 one.area.Timed(list, "", "")}));
}

TEST_CASE("an empty list of programs still gives its own row, and an extension without one none") {
    FileExts one;
    (void)one.area.Key(".a\\OpenWithList");
    one.area.Add(".b", "a", "tool.exe");
    one.area.Add(".c\\OpenWithProgids", "a", "tool.exe");
    one.area.Add(".d\\OpenWithList", "a", "tool.exe");
    one.registry.MakeReadOnly(one.area.Key(".d\\OpenWithList"));
    one.area.Add(".e\\OpenWithList", "a", "tool.exe");
    one.registry.MakeReadOnly(one.area.Key(".e"));
    (void)one.area.Key(".f\\OpenWithList");
    CHECK(RowsOf(&CheckFileExtsOpenWithList) ==
          Lines({one.area.Timed(".a\\OpenWithList", "", ""), one.area.Timed(".f\\OpenWithList", "", "")}));
}

TEST_CASE("programs of a list are read with names of up to 249 characters and data of up to 250 bytes") {
    FileExts one;
    const std::string list = ".a\\OpenWithList";
    one.area.Add(list, "a250", Text(250));
    one.area.Add(list, "a251", Text(251));
    one.area.Add(list, std::string(249, 'n'), "x");
    one.area.Add(list, std::string(250, 'n'), "x");
    CHECK(RowsOf(&CheckFileExtsOpenWithList) ==
          Lines({one.area.Timed(list, "a250", Text(250)), one.area.Timed(list, std::string(249, 'n'), "x"),
                 one.area.Timed(list, "", "")}));
}

TEST_CASE("lists of programs: without write access or with a cancel nothing more is reported") {
    FileExts one;
    one.area.Add(".a\\OpenWithList", "a", "a.exe");
    one.area.Add(".a\\OpenWithList", "b", "b.exe");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckFileExtsOpenWithList) ==
          Lines({one.area.Timed(".a\\OpenWithList", "a", "a.exe")}));
    DemandNothingAfterCancel(&CheckFileExtsOpenWithList);
    one.registry.MakeReadOnly(one.area.Key());
    CHECK(RowsOf(&CheckFileExtsOpenWithList).empty());
}
