// Checks of the system's lists whose entries are the values of one key.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "system_areas.h"
#include "tests/support/scratch_folder.h"

namespace {

/// A name of so many characters that leads to no file.
std::string GoneName(std::size_t length) { return "gone" + std::string(length - 8, 'x') + ".dll"; }

/// A list of one value, whose name or data are of a size around the end of the buffers.
struct SizedValue {
    Check check;
    const char* area;
    std::size_t rows;
};

constexpr SizedValue kLists[] = {{&CheckFonts, kFontsArea, 1},
                                 {&CheckFirewallApplications, kFirewallArea, 1},
                                 {&CheckInstallerFolders, kInstallerFoldersArea, 1},
                                 {&CheckHelpFiles, kHelpArea, 1},
                                 {&CheckHelpFiles, kHtmlHelpArea, 2},
                                 {&CheckSharedDlls, kSharedDllsArea, 1}};

std::size_t RowCount(Check check) {
    CRecordingView view;
    CHECK(view.Run(check).inTime);
    return view.Rows().size();
}

}  // namespace

TEST_CASE("values whose name has up to 249 characters are examined") {
    for (const SizedValue& list : kLists) {
        CAPTURE(list.area);
        for (const std::size_t length : {248U, 249U, 250U, 251U}) {
            CAPTURE(length);
            OneArea one(HKEY_LOCAL_MACHINE, list.area);
            one.area.Add("", GoneName(length), "gone.ttf");
            CHECK(RowCount(list.check) == (length < 250 ? list.rows : 0));
        }
    }
}

TEST_CASE("values whose data have up to 250 bytes are examined") {
    for (const SizedValue& list : kLists) {
        CAPTURE(list.area);
        for (const std::size_t bytes : {249U, 250U, 251U}) {
            CAPTURE(bytes);
            OneArea one(HKEY_LOCAL_MACHINE, list.area);
            one.area.Add("", "gone.dll", std::string(bytes - 1, 'x'));  // its terminator is stored with it
            CHECK(RowCount(list.check) == (bytes <= 250 ? list.rows : 0));
        }
    }
}

TEST_CASE("a value that does not fit is passed over, and those behind it are examined") {
    OneArea one(HKEY_LOCAL_MACHINE, kSharedDllsArea);
    one.area.Add("", "a.dll", std::string(300, 'x'));
    one.area.Add("", GoneName(300), "1");
    one.area.Add("", "z.dll", "1");
    CHECK(RowsOf(&CheckSharedDlls) == Lines({one.area.Untimed("", "z.dll", "")}));
}

TEST_CASE("the firewall's list is judged by the names of its text values") {
    const CScratchFolder scratch;
    OneArea one(HKEY_LOCAL_MACHINE, kFirewallArea);
    one.area.Add("", scratch.AddFile("here.exe"), "C:\\gone\\a.exe:*:Enabled");
    one.area.Add("", "%windir%\\system32\\notepad.exe", "1");
    one.area.Add("", "C:\\gone\\a.exe", scratch.AddFile("data.exe"));
    one.area.Add("", "C:\\gone\\b.exe", "1", REG_EXPAND_SZ);
    one.area.Add("", "C:\\gone\\c.exe", "1", REG_BINARY);
    one.area.Add("", "C:\\gone\\d.exe", "");
    CHECK(RowsOf(&CheckFirewallApplications) ==
          Lines({one.area.Untimed("", "C:\\gone\\a.exe", scratch.Path() + "\\data.exe"),
                 one.area.Untimed("", "C:\\gone\\d.exe", "")}));
}

TEST_CASE("a text value without a name in the firewall's list leads to no program") {
    OneArea one(HKEY_LOCAL_MACHINE, kFirewallArea);
    one.area.Add("", "", "x");
    CHECK(RowsOf(&CheckFirewallApplications) == Lines({one.area.Untimed("", "", "x")}));
}

TEST_CASE("installer folders are judged by the names of all values, as they stand") {
    const CScratchFolder scratch;
    OneArea one(HKEY_LOCAL_MACHINE, kInstallerFoldersArea);
    one.area.Add("", scratch.Path(), "");
    one.area.Add("", scratch.Path() + "\\", "");
    one.area.Add("", "", "default");
    one.area.Add("", "%windir%", "");  // not expanded
    one.area.Add("", "C:\\gone\\", "1", REG_BINARY);
    one.area.Add("", "C:\\gone2\\", "", REG_DWORD);
    CHECK(RowsOf(&CheckInstallerFolders) ==
          Lines({one.area.Untimed("", "", "default"), one.area.Untimed("", "%windir%", ""),
                 one.area.Untimed("", "C:\\gone2\\", ""), one.area.Untimed("", "C:\\gone\\", "1")}));
}

TEST_CASE("help files are sought under their name in the folder that the data tell") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("here.hlp");
    OneArea one(HKEY_LOCAL_MACHINE, kHelpArea);
    one.area.Add("", "here.hlp", scratch.Path());
    one.area.Add("", "notepad.exe", "%windir%", REG_EXPAND_SZ);
    one.area.Add("", "gone.hlp", scratch.Path(), REG_BINARY);
    one.area.Add("", "", scratch.Path());  // no file name
    one.area.Add("", "folderless.hlp", "");
    CHECK(RowsOf(&CheckHelpFiles) ==
          Lines({one.area.Untimed("", "", scratch.Path()), one.area.Untimed("", "folderless.hlp", ""),
                 one.area.Untimed("", "gone.hlp", scratch.Path())}));
}

TEST_CASE("a folder in the help list is not cut behind a mark that only the newer list knows") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("here.hlp");
    OneArea one(HKEY_LOCAL_MACHINE, kHelpArea);
    one.area.Add("", "here.hlp", "Folder:" + scratch.Path());
    CHECK(RowsOf(&CheckHelpFiles) == Lines({one.area.Untimed("", "here.hlp", "Folder:" + scratch.Path())}));
}

TEST_CASE("a missing file of the newer help list gives two rows, and the marks before folders are dropped") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("here.chm");
    OneArea one(HKEY_LOCAL_MACHINE, kHtmlHelpArea);
    one.area.Add("", "gone.chm", "Folder:" + scratch.Path());
    one.area.Add("", "here.chm", "Folder:" + scratch.Path());
    const std::string gone = one.area.Untimed("", "gone.chm", "Folder:" + scratch.Path());
    CHECK(RowsOf(&CheckHelpFiles) == Lines({gone, gone}));
}

TEST_CASE("the mark is looked for in the joined path, with its letter case, wherever it stands") {
    const CScratchFolder scratch;
    (void)scratch.AddFile("here.chm");
    OneArea one(HKEY_LOCAL_MACHINE, kHtmlHelpArea);
    one.area.Add("", "Folder:" + scratch.Path() + "\\here.chm", "C:\\gone");  // in the name
    one.area.Add("", "here.chm", "2 Folder:" + scratch.Path());
    CHECK(RowsOf(&CheckHelpFiles).empty());
    one.area.Add("", "here.chm", "folder:" + scratch.Path());
    CHECK(RowCount(&CheckHelpFiles) == 2);
    one.area.Add("", "here.chm", "Folder:C:\\gone Folder:" + scratch.Path());  // the first one counts
    CHECK(RowCount(&CheckHelpFiles) == 2);
}

TEST_CASE("the two tests of the newer help list are independent") {
    const CScratchFolder scratch;
    OneArea one(HKEY_LOCAL_MACHINE, kHtmlHelpArea);
    one.area.Add("", "notepad.exe", "%windir%");  // not there as it stands, there when it is expanded
    (void)scratch.AddFile("a.exe b.chm");         // there as it stands, taken for a command otherwise
    one.area.Add("", "a.exe b.chm", scratch.Path());
    CHECK(RowsOf(&CheckHelpFiles) == Lines({one.area.Untimed("", "a.exe b.chm", scratch.Path()),
                                            one.area.Untimed("", "notepad.exe", "%windir%")}));
}

TEST_CASE("values of the newer help list without name or data are left alone") {
    OneArea one(HKEY_LOCAL_MACHINE, kHtmlHelpArea);
    one.area.Add("", "", "C:\\gone");
    one.area.Add("", "gone.chm", "");
    CHECK(RowsOf(&CheckHelpFiles).empty());
}

TEST_CASE("the two help lists are examined one after the other, each by itself") {
    CScratchRegistry registry;
    CScratchArea help(registry, HKEY_LOCAL_MACHINE, kHelpArea);
    CScratchArea html(registry, HKEY_LOCAL_MACHINE, kHtmlHelpArea);
    help.Add("", "gone.hlp", "C:\\gone");
    html.Add("", "gone.chm", "C:\\gone");
    const std::string htmlRow = html.Untimed("", "gone.chm", "C:\\gone");
    CHECK(RowsOf(&CheckHelpFiles) == Lines({help.Untimed("", "gone.hlp", "C:\\gone"), htmlRow, htmlRow}));
    registry.MakeReadOnly(help.Key());
    CHECK(RowsOf(&CheckHelpFiles) == Lines({htmlRow, htmlRow}));
}

TEST_CASE("shared modules are judged by their names, whatever their count is") {
    const CScratchFolder scratch;
    OneArea one(HKEY_LOCAL_MACHINE, kSharedDllsArea);
    one.area.Add("", scratch.AddFile("here.dll"), "1");
    one.area.Add("", "C:\\gone\\folder", "1");  // no three-letter extension
    one.area.Add("", "C:\\gone\\page.html", "1");
    one.area.Add("", "", "1");
    one.area.Add("", "kernel32.dll", "1");
    SetBytes(one.area.Key(), "C:\\gone\\lib.dll", REG_DWORD, std::string("\1\0\0\0", 4));
    CHECK(RowsOf(&CheckSharedDlls) == Lines({one.area.Untimed("", "C:\\gone\\lib.dll", "")}));
}
