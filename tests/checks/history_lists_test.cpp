// Histories kept as the values of one key.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/history/history_checks.h"
#include "area_cases.h"
#include "history_areas.h"

namespace {

struct NameList {
    Check check;
    const char* area;
};

// Of these neither type nor data are looked at.
constexpr NameList kNameLists[] = {{&CheckLastVisitedMru, kLastVisitedArea},
                                   {&CheckRecentDocs, kRecentDocsArea},
                                   {&CheckRunMru, kRunArea},
                                   {&CheckStreamMru, kStreamArea},
                                   {&CheckWallpaperMru, kWallpaperArea}};

// Of these the data are read.
constexpr NameList kTextLists[] = {{&CheckTypedUrls, kTypedUrlsArea}, {&CheckOpenSaveMru, kOpenSaveArea}};

struct History : OneArea {
    explicit History(const char* path) : OneArea(HKEY_CURRENT_USER, path) {}
};

std::string Name(std::size_t length) { return std::string(length, 'n'); }

}  // namespace

TEST_CASE("lists of names: every named value is reported, whatever its type, and its data are not shown") {
    for (const NameList& list : kNameLists) {
        CAPTURE(list.area);
        History one(list.area);
        one.area.Add("", "", "default");
        one.area.Add("", "a", "text");
        one.area.Add("", "b", "binary", REG_BINARY);
        one.area.Add("", "MRUList", "ba");
        SetBytes(one.area.Key(), "z", REG_DWORD, "1234");
        CHECK(RowsOf(list.check) ==
              Lines({one.area.Untimed("", "a", ""), one.area.Untimed("", "b", ""),
                     one.area.Untimed("", "MRUList", ""), one.area.Untimed("", "z", "")}));
    }
}

TEST_CASE("lists of names: data of any size are reported, for they are not read") {
    for (const NameList& list : kNameLists) {
        CAPTURE(list.area);
        History one(list.area);
        SetBytes(one.area.Key(), "a", REG_BINARY, std::string(100'000, 'x'));
        SetBytes(one.area.Key(), "b", REG_SZ, std::string(251, 'x'));
        CHECK(RowsOf(list.check) == Lines({one.area.Untimed("", "a", ""), one.area.Untimed("", "b", "")}));
    }
}

TEST_CASE("lists of names: names of up to 249 characters are reported, longer ones passed over") {
    for (const NameList& list : kNameLists) {
        CAPTURE(list.area);
        History one(list.area);
        for (const std::size_t length : {248U, 249U, 250U, 251U}) one.area.Add("", Name(length), "x");
        one.area.Add("", "z", "x");
        CHECK(RowsOf(list.check) ==
              Lines({one.area.Untimed("", Name(248), ""), one.area.Untimed("", Name(249), ""),
                     one.area.Untimed("", "z", "")}));
    }
}

TEST_CASE("lists of texts: names of up to 249 characters and data of up to 250 bytes are reported") {
    for (const NameList& list : kTextLists) {
        CAPTURE(list.area);
        History one(list.area);
        for (const std::size_t length : {248U, 249U, 250U, 251U}) one.area.Add("", Name(length), "x");
        for (const std::size_t bytes : {249U, 250U, 251U})
            one.area.Add("", std::to_string(bytes), std::string(bytes - 1, 'x'));
        one.area.Add("", "z", "x");
        CHECK(RowsOf(list.check) ==
              Lines({one.area.Untimed("", "249", std::string(248, 'x')),
                     one.area.Untimed("", "250", std::string(249, 'x')), one.area.Untimed("", Name(248), "x"),
                     one.area.Untimed("", Name(249), "x"), one.area.Untimed("", "z", "x")}));
    }
}

TEST_CASE("lists of texts: only REG_SZ values are reported") {
    for (const NameList& list : kTextLists) {
        CAPTURE(list.area);
        History one(list.area);
        one.area.Add("", "a", "http://a/");
        one.area.Add("", "b", "http://b/", REG_EXPAND_SZ);
        one.area.Add("", "c", "http://c/", REG_BINARY);
        one.area.Add("", "d", "");
        CHECK(RowsOf(list.check) ==
              Lines({one.area.Untimed("", "a", "http://a/"), one.area.Untimed("", "d", "")}));
    }
}

TEST_CASE("a typed address without a name is reported") {
    History urls(kTypedUrlsArea);
    urls.area.Add("", "", "http://a/");
    CHECK(RowsOf(&CheckTypedUrls) == Lines({urls.area.Untimed("", "", "http://a/")}));
}

TEST_CASE("an opened file without a name is not reported in the list of all files") {
    History files(kOpenSaveArea);
    files.area.Add("", "", "C:\\a.txt");
    files.area.Add("", "a", "C:\\a.txt");
    CHECK(RowsOf(&CheckOpenSaveMru) == Lines({files.area.Untimed("", "a", "C:\\a.txt")}));
}

TEST_CASE("text data without a terminator are shown to their end") {
    History one(kTypedUrlsArea);
    const std::string text(251, 'x');  // the system stores a terminator that it finds behind the data
    REQUIRE(::RegSetValueExA(one.area.Key(), "a", 0, REG_SZ, reinterpret_cast<const BYTE*>(text.data()),
                             250) == ERROR_SUCCESS);
    CHECK(RowsOf(&CheckTypedUrls) == Lines({one.area.Untimed("", "a", std::string(250, 'x'))}));
}

TEST_CASE("a Run box list with two commands and its order gives three rows with empty data") {
    History one(kRunArea);
    one.area.Add("", "a", "cmd\\1");
    one.area.Add("", "b", "regedit\\1");
    one.area.Add("", "MRUList", "ab");
    CHECK(RowsOf(&CheckRunMru) == Lines({one.area.Untimed("", "a", ""), one.area.Untimed("", "b", ""),
                                         one.area.Untimed("", "MRUList", "")}));
}

TEST_CASE("usage counters show each stored name and what it reads in clear, one key after the other") {
    CScratchRegistry registry;
    CScratchArea first(registry, HKEY_CURRENT_USER, kUserAssistArea1);
    CScratchArea second(registry, HKEY_CURRENT_USER, kUserAssistArea2);
    first.Add("", "HRZR_EHACNGU:P:\\{0123-nz}\\grfg.rkr", "x", REG_BINARY);
    second.Add("", "abcABC", "x");
    second.Add("", "", "x");
    SetBytes(second.Key(), "nopNOP", REG_BINARY, std::string(10'000, 'x'));
    CHECK(RowsOf(&CheckUserAssist) ==
          Lines({first.Untimed("", "HRZR_EHACNGU:P:\\{0123-nz}\\grfg.rkr",
                               "UEME_RUNPATH:C:\\{0123-am}\\test.exe"),
                 second.Untimed("", "", ""), second.Untimed("", "abcABC", "nopNOP"),
                 second.Untimed("", "nopNOP", "abcABC")}));
}

TEST_CASE("the second key of usage counters is examined where the first does not open") {
    CScratchRegistry registry;
    CScratchArea first(registry, HKEY_CURRENT_USER, kUserAssistArea1);
    CScratchArea second(registry, HKEY_CURRENT_USER, kUserAssistArea2);
    first.Add("", "a", "x");
    second.Add("", "b", "x");
    registry.MakeReadOnly(first.Key());
    CHECK(RowsOf(&CheckUserAssist) == Lines({second.Untimed("", "b", "o")}));
}

TEST_CASE("usage counters: names of up to 249 characters are reported") {
    History one(kUserAssistArea1);
    for (const std::size_t length : {248U, 249U, 250U}) one.area.Add("", Name(length), "x");
    CHECK(RowsOf(&CheckUserAssist) == Lines({one.area.Untimed("", Name(248), std::string(248, 'a')),
                                             one.area.Untimed("", Name(249), std::string(249, 'a'))}));
}
