// What Explorer keeps per file extension.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/history/history_checks.h"
#include "area_cases.h"
#include "history_areas.h"

namespace {

struct FileExts : OneArea {
    FileExts() : OneArea(HKEY_CURRENT_USER, kFileExtsArea) {}
    void AddClass(const std::string& name) { (void)registry.Add(HKEY_CLASSES_ROOT, name); }
    /// A value of the classes root itself.
    void AddRootValue(const std::string& name) { SetText(registry.Add(HKEY_CLASSES_ROOT, ""), name, "x"); }
};

std::string Text(std::size_t bytes) { return std::string(bytes - 1, 'x'); }

}  // namespace

TEST_CASE("a known extension without default value is reported twice") {
    FileExts one;
    one.AddClass(".abc");
    one.area.Add(".abc", "Application", "tool.exe");  // so the second step has nothing to say
    const std::string row = one.area.Timed(".abc", "", "");
    CHECK(RowsOf(&CheckFileExts) == Lines({row, row}));
}

TEST_CASE("a known extension with an empty default value is reported once, with a text it is not") {
    FileExts one;
    for (const char* extension : {".a", ".b", ".c"}) {
        one.AddClass(extension);
        one.area.Add(extension, "Application", "tool.exe");
    }
    one.area.Add(".a", "", "");
    one.area.Add(".b", "", "text");
    one.area.Add(".c", "", "", REG_EXPAND_SZ);
    CHECK(RowsOf(&CheckFileExts) == Lines({one.area.Timed(".a", "", ""), one.area.Timed(".c", "", "")}));
}

TEST_CASE("an extension without \"Application\" is reported twice even if it is not known") {
    FileExts one;
    (void)one.area.Key(".abc");
    const std::string row = one.area.Timed(".abc", "", "");
    CHECK(RowsOf(&CheckFileExts) == Lines({row, row}));
}

TEST_CASE("a known extension with neither default value nor \"Application\" is reported four times") {
    FileExts one;
    one.AddClass(".a");
    one.AddClass(".b");
    (void)one.area.Key(".a");
    one.area.Add(".b", "", "");
    const std::string first = one.area.Timed(".a", "", "");
    const std::string second = one.area.Timed(".b", "", "");
    CHECK(RowsOf(&CheckFileExts) == Lines({first, first, first, first, second, second}));
}

TEST_CASE("an extension with \"Application\", or with a subkey, is sound where it is not known") {
    FileExts one;
    one.AddClass(".c");
    one.area.Add(".a", "Application", "");
    (void)one.area.Key(".b\\Subkey");
    (void)one.area.Key(".c\\Subkey");
    CHECK(RowsOf(&CheckFileExts).empty());
}

TEST_CASE("a default value that is too large is neither absent nor empty") {
    FileExts one;
    one.AddClass(".a");
    one.area.Add(".a", "", Text(251));
    CHECK(RowsOf(&CheckFileExts).empty());
}

TEST_CASE("an \"Application\" that is too large fails to read, and then counts as none") {
    FileExts one;
    one.area.Add(".a", "Application", Text(250));
    one.area.Add(".b", "Application", Text(251));
    const std::string row = one.area.Timed(".b", "", "");
    CHECK(RowsOf(&CheckFileExts) == Lines({row, row}));
}

TEST_CASE("a user's choice of a class that is gone is reported") {
    FileExts one;
    one.AddClass("here.file");
    one.area.Add(".a\\UserChoice", "Progid", "here.file");
    one.area.Add(".b\\UserChoice", "Progid", "gone.file");
    one.area.Add(".c\\UserChoice", "Progid", "gone.file", REG_EXPAND_SZ);
    one.area.Add(".d\\UserChoice", "Other", "gone.file");
    one.area.Add(".e\\UserChoice", "Progid", "");
    (void)one.area.Key(".f\\UserChoice");
    one.area.Add(".g\\userchoice", "progid", "gone.file");
    CHECK(RowsOf(&CheckFileExts) ==
          Lines({one.area.Timed(".b", "", "gone.file"), one.area.Timed(".c", "", "gone.file"),
                 one.area.Timed(".g", "", "gone.file")}));
}

TEST_CASE("a chosen class is read up to 250 bytes, and a class that may not be opened is there") {
    FileExts one;
    one.area.Add(".a\\UserChoice", "Progid", Text(249));
    one.area.Add(".b\\UserChoice", "Progid", Text(250));
    one.area.Add(".c\\UserChoice", "Progid", Text(251));
    one.registry.Lock(one.registry.Add(HKEY_CLASSES_ROOT, "locked.file"));
    one.area.Add(".d\\UserChoice", "Progid", "locked.file");
    CHECK(RowsOf(&CheckFileExts) ==
          Lines({one.area.Timed(".a", "", Text(249)), one.area.Timed(".b", "", Text(250))}));
}

TEST_CASE("a user's choice counts only where no list of programs or classes exists") {
    FileExts one;
    one.area.Add(".a\\UserChoice", "Progid", "gone.file");
    one.area.Add(".a\\OpenWithProgids", "x", "");
    one.area.Add(".b\\UserChoice", "Progid", "gone.file");
    (void)one.area.Key(".b\\OpenWithList");
    one.area.Add(".c\\UserChoice", "Progid", "gone.file");
    one.registry.Lock(one.area.Key(".c\\OpenWithList"));  // there, though it does not open
    one.area.Add(".d\\UserChoice", "Progid", "gone.file");
    one.registry.Lock(one.area.Key(".d\\UserChoice"));
    CHECK(RowsOf(&CheckFileExts).empty());
}

TEST_CASE("an empty list of classes is reported as its extension") {
    FileExts one;
    (void)one.area.Key(".a\\OpenWithProgids");
    CHECK(RowsOf(&CheckFileExts) == Lines({one.area.Timed(".a", "", "")}));
}

TEST_CASE("classes of a list are reported where they have a name and data") {
    FileExts one;
    one.area.Add(".a\\OpenWithProgids", "", "default");
    one.area.Add(".a\\OpenWithProgids", "a.file", "");
    one.area.Add(".a\\OpenWithProgids", "b.file", "text");
    one.area.Add(".a\\OpenWithProgids", "c.file", "wide", REG_EXPAND_SZ);
    SetBytes(one.area.Key(".a\\OpenWithProgids"), "d.file", REG_NONE, "");
    CHECK(RowsOf(&CheckFileExts) == Lines({one.area.Timed(".a\\OpenWithProgids", "b.file", "text"),
                                           one.area.Timed(".a\\OpenWithProgids", "c.file", "wide")}));
}

TEST_CASE("the walk of a list of classes stops at a name that is a value of the classes root") {
    FileExts one;
    one.AddRootValue("b.file");
    one.AddClass("a.file");  // a key does not count
    for (const char* name : {"a.file", "b.file", "c.file"}) one.area.Add(".a\\OpenWithProgids", name, "text");
    one.area.Add(".b\\OpenWithProgids", "z.file", "text");
    CHECK(RowsOf(&CheckFileExts) == Lines({one.area.Timed(".a\\OpenWithProgids", "a.file", "text"),
                                           one.area.Timed(".b\\OpenWithProgids", "z.file", "text")}));
}

TEST_CASE("a default value of the classes root stops the walk at a value without a name") {
    FileExts one;
    one.AddRootValue("");
    one.area.Add(".a\\OpenWithProgids", "", "default");
    one.area.Add(".a\\OpenWithProgids", "a.file", "text");
    CHECK(RowsOf(&CheckFileExts).empty());
}

TEST_CASE("classes of a list are read with names of up to 249 characters and data of up to 250 bytes") {
    FileExts one;
    const std::string list = ".a\\OpenWithProgids";
    one.area.Add(list, "a250", Text(250));
    one.area.Add(list, "a251", Text(251));
    one.area.Add(list, std::string(249, 'n'), "x");
    one.area.Add(list, std::string(250, 'n'), "x");
    one.area.Add(list, "z", "x");
    CHECK(RowsOf(&CheckFileExts) ==
          Lines({one.area.Timed(list, "a250", Text(250)), one.area.Timed(list, std::string(249, 'n'), "x"),
                 one.area.Timed(list, "z", "x")}));
}

TEST_CASE("a list of classes is not examined beside a list of programs") {
    FileExts one;
    one.area.Add(".a\\OpenWithProgids", "a.file", "text");
    (void)one.area.Key(".a\\OpenWithList");
    (void)one.area.Key(".b\\OpenWithProgids");
    (void)one.area.Key(".b\\OpenWithList");
    one.area.Add(".c\\OpenWithProgids", "a.file", "text");
    one.registry.Lock(one.area.Key(".c\\OpenWithList"));
    one.area.Add(".d\\OpenWithProgids", "a.file", "text");
    one.registry.MakeReadOnly(one.area.Key(".d\\OpenWithProgids"));
    CHECK(RowsOf(&CheckFileExts).empty());
}

TEST_CASE("extensions: a cancel is noticed before the next extension and before the next class of a list") {
    {
        FileExts one;
        (void)one.area.Key(".a\\OpenWithProgids");
        (void)one.area.Key(".b\\OpenWithProgids");
        CHECK(RowsWhenCanceledAtFirstRow(&CheckFileExts) == Lines({one.area.Timed(".a", "", "")}));
        DemandNothingAfterCancel(&CheckFileExts);
    }
    FileExts one;
    one.area.Add(".a\\OpenWithProgids", "a", "x");
    one.area.Add(".a\\OpenWithProgids", "b", "x");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckFileExts) ==
          Lines({one.area.Timed(".a\\OpenWithProgids", "a", "x")}));
}

TEST_CASE("an extension's rows come in the order of the rules, before the next extension's") {
    FileExts one;
    one.area.Add(".a\\UserChoice", "Progid", "gone.file");
    (void)one.area.Key(".b");
    (void)one.area.Key(".c\\OpenWithProgids");
    const std::string second = one.area.Timed(".b", "", "");
    CHECK(RowsOf(&CheckFileExts) ==
          Lines({one.area.Timed(".a", "", "gone.file"), second, second, one.area.Timed(".c", "", "")}));
}
