// What all checks of classes, software settings and COM registration have in common.
#include <doctest/doctest.h>

#include <string>

#include "analysis/classes/class_checks.h"
#include "analysis/classes/software_checks.h"
#include "analysis/com/com_checks.h"
#include "check_support.h"
#include "tests/support/native_calls.h"
#include "tests/support/write_times.h"

namespace {

/// An entry that a check reports; '#' stands for its number.
struct Entry {
    Check check;
    HKEY root;
    const char* area;
    const char* top;    // of the area's keys, the one whose write time the row shows; empty: none
    const char* below;  // the entry's key below it
    const char* name;   // its value; null: there is none
    const char* data;
    const char* row;
};

const Entry kEntries[] = {
    {&CheckClassKeys, HKEY_CLASSES_ROOT, "", "", "Class#\\DefaultIcon", nullptr, "",
     "\\HKEY_CLASSES_ROOT\\Class#\\DefaultIcon|||"},
    {&CheckSoftwareKeys, HKEY_CURRENT_USER, "Software", "Key#", "", nullptr, "",
     "\\HKEY_CURRENT_USER\\Software\\Key#|timed||"},
    {&CheckMimeTypes, HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type", "a/#", "", "Extension", ".gone#",
     "\\HKEY_CLASSES_ROOT\\MIME\\Database\\Content Type\\a/#|timed|Extension|.gone#"},
    {&CheckEmptyFileTypes, HKEY_CLASSES_ROOT, "", ".#", "x", nullptr, "", "\\HKEY_CLASSES_ROOT\\.#|timed||"},
    {&CheckMediaTracing, HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Tracing\\LccMedia", "Tool#", "",
     "FileDirectory", "C:\\gone\\#",
     "\\HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Tracing\\LccMedia\\Tool#|timed|FileDirectory|C:\\gone\\#"},
    {&CheckCdProviders, HKEY_LOCAL_MACHINE,
     "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Applets\\DeluxeCD\\Providers", "Disc#", "",
     "ProviderLogo", "C:\\gone\\#",
     "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Applets\\DeluxeCD\\Providers\\Disc#"
     "|timed|"
     "ProviderLogo|C:\\gone\\#"},
    {&CheckBrowserFolders, HKEY_LOCAL_MACHINE,
     "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Cache\\Paths", "Path#", "",
     "CachePath", "C:\\gone\\#",
     "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Internet "
     "Settings\\Cache\\Paths\\Path#|timed|"
     "CachePath|C:\\gone\\#"},
    {&CheckAppIds, HKEY_CLASSES_ROOT, "AppID", "tool#.exe", "", "AppID", "{#}",
     "\\HKEY_CLASSES_ROOT\\AppID\\tool#.exe|timed|AppID|{#}"},
    {&CheckInstallerSources, HKEY_LOCAL_MACHINE, "SOFTWARE\\Classes\\Installer\\Products", "Product#",
     "SourceList", "LastUsedSource", "n;1;#",
     "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Installer\\Products\\Product#\\SourceList|timed|"
     "LastUsedSource|n;1;#"},
    {&CheckCurrentVersions, HKEY_CLASSES_ROOT, "", "Class#", "CurVer", "", "Gone.#",
     "\\HKEY_CLASSES_ROOT\\Class#\\CurVer|timed||Gone.#"},
    {&CheckFileTypeLinks, HKEY_CLASSES_ROOT, "", ".#", "", "", "Gone.#",
     "\\HKEY_CLASSES_ROOT\\.#|timed||Gone.#"},
    {&CheckRunEntries, HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "", "",
     "Entry #", "C:\\windows\\notepad.exe /#",
     "\\HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run||Entry "
     "#|C:\\windows\\notepad.exe /#"},
    {&CheckMuiCache, HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Windows\\ShellNoRoam\\MUICache", "", "",
     "C:\\gone\\#.exe", "Tool #",
     "\\HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\ShellNoRoam\\MUICache||C:\\gone\\#.exe|Tool #"},
    {&CheckClassSubkeys, HKEY_CLASSES_ROOT, "CLSID", "{#}", "LocalServer32", "", "C:\\gone\\#.exe",
     "\\HKEY_CLASSES_ROOT\\CLSID\\{#}\\LocalServer32|timed||C:\\gone\\#.exe"},
    {&CheckClassLinks, HKEY_CLASSES_ROOT, "CLSID", "{#}", "ProgID", "", "Gone.#",
     "\\HKEY_CLASSES_ROOT\\CLSID\\{#}\\ProgID|timed||Gone.#"},
    {&CheckTypeLibraries, HKEY_CLASSES_ROOT, "TypeLib", "{#}", "1.0\\0\\Win32", "", "C:\\gone\\#.tlb",
     "\\HKEY_CLASSES_ROOT\\TypeLib\\{#}\\1.0\\0\\Win32|timed||C:\\gone\\#.tlb"},
    {&CheckClassesRootKeys, HKEY_CLASSES_ROOT, "", "Class#", "CLSID", "", "{#}",
     "\\HKEY_CLASSES_ROOT\\Class#\\CLSID|timed||{#}"},
    {&CheckClassTypeLibLinks, HKEY_CLASSES_ROOT, "CLSID", "{#}", "TypeLib", "", "{#}",
     "\\HKEY_CLASSES_ROOT\\CLSID\\{#}\\TypeLib|timed||{#}"},
    {&CheckInterfaces, HKEY_CLASSES_ROOT, "Interface", "{#}", "BaseInterface", "", "{#}",
     "\\HKEY_CLASSES_ROOT\\Interface\\{#}\\BaseInterface|timed||{#}"},
};

std::string Numbered(std::string text, char number) {
    for (char& letter : text)
        if (letter == '#') letter = number;
    return text;
}

std::string Join(const std::string& left, const std::string& right) {
    return left.empty() || right.empty() ? left + right : left + "\\" + right;
}

/// A registry in which an entry stands twice.
class CPlanted : public CScratchRegistry {
public:
    explicit CPlanted(const Entry& entry) : m_entry(entry) {
        for (char number : {'1', '2'}) Plant(number);
    }
    HKEY Area() { return Add(m_entry.root, m_entry.area); }
    HKEY Top(char number) { return Add(m_entry.root, Numbered(Join(m_entry.area, m_entry.top), number)); }
    HKEY Plant(char number) {
        const std::string path = Join(Join(m_entry.area, m_entry.top), m_entry.below);
        const HKEY key = Add(m_entry.root, Numbered(path, number));
        if (m_entry.name != nullptr)
            SetText(key, Numbered(m_entry.name, number), Numbered(m_entry.data, number));
        return key;
    }
    [[nodiscard]] std::string Row(char number) const { return Numbered(m_entry.row, number) + "\n"; }

private:
    const Entry& m_entry;
};

}  // namespace

TEST_CASE("each check reports its entries in their order, and leaves no handle open") {
    for (const Entry& entry : kEntries) {
        CAPTURE(std::string(entry.row));
        CPlanted registry(entry);
        CHECK(RowsOf(entry.check) == registry.Row('1') + registry.Row('2'));
        const std::size_t before = OwnHandles().size();
        for (int round = 0; round < 3; ++round) (void)RowsOf(entry.check);
        CHECK(OwnHandles().size() == before);
    }
}

TEST_CASE("an area that is missing gives no row") {
    const CScratchRegistry registry;
    for (const Entry& entry : kEntries) {
        CAPTURE(std::string(entry.row));
        CHECK(RowsOf(entry.check).empty());
    }
}

TEST_CASE("an area that grants reading alone gives no row") {
    for (const Entry& entry : kEntries) {
        if (entry.area[0] == '\0')
            continue;  // a root opened by no name is not asked for its access list here
        CAPTURE(std::string(entry.row));
        CPlanted registry(entry);
        registry.MakeReadOnly(registry.Area());
        CHECK(RowsOf(entry.check).empty());
    }
}

TEST_CASE("a check that is cancelled beforehand reports nothing") {
    for (const Entry& entry : kEntries) {
        CAPTURE(std::string(entry.row));
        CPlanted registry(entry);
        DemandNothingAfterCancel(entry.check);
    }
}

TEST_CASE("a check that is cancelled at its first row reports no second one") {
    for (const Entry& entry : kEntries) {
        CAPTURE(std::string(entry.row));
        CPlanted registry(entry);
        CHECK(RowsWhenCanceledAtFirstRow(entry.check) == registry.Row('1'));
    }
}

TEST_CASE("rows show the write time of the area's subkey, not that of the key below it") {
    for (const Entry& entry : kEntries) {
        if (entry.top[0] == '\0') continue;
        CAPTURE(std::string(entry.row));
        CPlanted registry(entry);
        const std::string time = UtcText(KeyWriteTime(registry.Top('2')));
        const std::string rows = TimedRowsOf(entry.check);
        CHECK(
            rows.find(
                Numbered(std::string(entry.row).replace(std::string(entry.row).find("timed"), 5, time), '2') +
                "\n") != std::string::npos);
    }
}

TEST_CASE("a change below the area's subkey does not change the write time that is shown") {
    for (const Check check : {&CheckClassSubkeys, &CheckTypeLibraries, &CheckInterfaces}) {
        CScratchRegistry registry;
        const HKEY keys[] = {registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{1}\\InprocServer32"),
                             registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{1}\\1.0\\0\\Win32"),
                             registry.Add(HKEY_CLASSES_ROOT, "Interface\\{1}\\TypeLib")};
        const std::string rows = TimedRowsOf(check);
        CHECK_FALSE(rows.empty());
        ::Sleep(1100);
        for (HKEY key : keys) SetText(key, "", "");
        CHECK(TimedRowsOf(check) == rows);
    }
}

TEST_CASE("each check's entries are found in the real registry") {
    const CScratchKey user(HKEY_CURRENT_USER);
    const CScratchKey machine(HKEY_LOCAL_MACHINE);
    CHECK(RowsOf(&CheckSoftwareKeys, {user.Path(), machine.Path()}) ==
          user.Path() + "|timed||\n" + machine.Path() + "|timed||\n");
    CScratchKey link(HKEY_CLASSES_ROOT, "CLSID\\{VellumorTest}");
    SetText(link.Add("ProgID"), "", "VellumorTest.Gone");
    CHECK(RowsOf(&CheckClassLinks, {link.Path()}) == link.Path() + "\\ProgID|timed||VellumorTest.Gone\n");
    CHECK(RowsOf(&CheckClassSubkeys, {link.Path()}) == link.Path() + "\\ProgID|timed||VellumorTest.Gone\n");
    const CScratchKey type(HKEY_CLASSES_ROOT, ".VellumorTest");
    CHECK(RowsOf(&CheckClassKeys, {type.Path()}) == type.Path() + "|||\n");
    for (const Check check : {&CheckEmptyFileTypes, &CheckFileTypeLinks, &CheckClassesRootKeys})
        CHECK(RowsOf(check, {type.Path()}) == type.Path() + "|timed||\n");
}
