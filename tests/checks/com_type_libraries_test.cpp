#include <doctest/doctest.h>

#include "analysis/com/com_checks.h"
#include "check_support.h"
#include "tests/support/scratch_folder.h"

namespace {

const std::string kVersion = "\\HKEY_CLASSES_ROOT\\TypeLib\\{L}\\1.0";

std::string RowsOfValue(const std::string& tail, const std::string& name, const std::string& data) {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "TypeLib\\{L}\\1.0\\" + tail, name, data);
    return RowsOf(&CheckTypeLibraries);
}

std::string RowsOfHelp(const std::string& data) { return RowsOfValue("HELPDIR", "", data); }

std::string RowsOfKey(const std::string& tail) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{L}\\" + tail);
    return RowsOf(&CheckTypeLibraries);
}

}  // namespace

TEST_CASE("a type library without versions and values is reported") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{L}");
    registry.AddText(HKEY_CLASSES_ROOT, "TypeLib\\{Default}", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, "TypeLib\\{Large}", std::string(300, 'n'), std::string(5000, 'd'));
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{Version}\\1.0");
    CHECK(RowsOf(&CheckTypeLibraries) == "\\HKEY_CLASSES_ROOT\\TypeLib\\{L}|timed||\n");
}

TEST_CASE("a help folder is reported when it is absent both as a command and as a path") {
    const CScratchFolder folder;
    CHECK(RowsOfHelp("C:\\gone") == kVersion + "\\HELPDIR|timed||C:\\gone\n");
    CHECK(RowsOfHelp(folder.Path()).empty());
    // There as a path alone: a command ends three characters behind its last dot.
    CHECK(RowsOfHelp(folder.AddFolder("x.help files")).empty());
    // There as a command alone.
    CHECK(RowsOfHelp("notepad.exe").empty());
    CHECK(RowsOfHelp("\"" + folder.AddFile("help.exe") + "\"").empty());
}

TEST_CASE("a help folder key without a value, or with an empty one, is reported") {
    CHECK(RowsOfKey("1.0\\HELPDIR") == kVersion + "\\HELPDIR|timed||\n");
    CHECK(RowsOfHelp("") == kVersion + "\\HELPDIR|timed||\n");
}

TEST_CASE("a help folder's first value is shown with its own name") {
    CHECK(RowsOfValue("HELPDIR", "named", "C:\\gone") == kVersion + "\\HELPDIR|timed|named|C:\\gone\n");
    CHECK(RowsOfValue("HELPDIR", "named", "C:\\").empty());
}

TEST_CASE("a locale's modules are reported when they are no files") {
    const CScratchFolder folder;
    const std::string module = folder.AddFile("here.tlb");
    for (const char* platform : {"Win16", "Win32"}) {
        CAPTURE(platform);
        const std::string tail = std::string("0\\") + platform;
        const std::string row = kVersion + "\\" + tail + "|timed||";
        CHECK(RowsOfValue(tail, "", "C:\\gone\\x.tlb") == row + "C:\\gone\\x.tlb\n");
        CHECK(RowsOfValue(tail, "", module).empty());
        CHECK(RowsOfValue(tail, "", module + "\\2").empty());
        CHECK(RowsOfValue(tail, "", "") == row + "\n");
        CHECK(RowsOfValue(tail, "named", "C:\\gone\\x.tlb") == row + "C:\\gone\\x.tlb\n");
        CHECK(RowsOfValue(tail, "named", module).empty());
        CHECK(RowsOfKey("1.0\\" + tail) == row + "\n");
    }
}

TEST_CASE("other keys of a type library are passed over") {
    for (const char* tail : {"0\\Win64", "0\\x\\Win32", "FLAGS", "Win32", "0"}) {
        CAPTURE(tail);
        CHECK(RowsOfValue(tail, "", "C:\\gone\\x.tlb").empty());
    }
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "TypeLib\\{L}\\HELPDIR", "", "C:\\gone");
    CHECK(RowsOf(&CheckTypeLibraries).empty());
}

TEST_CASE("modules and help folders of 300 and of 5000 bytes are read whole") {
    for (const std::size_t length :
         {std::size_t{249}, std::size_t{250}, std::size_t{300}, std::size_t{5000}}) {
        const std::string name(length, 'n');
        const std::string data = "C:\\" + std::string(length - 3, 'x');
        CHECK(RowsOfValue("0\\Win32", name, data) == kVersion + "\\0\\Win32|timed||" + data + "\n");
        CHECK(RowsOfValue("HELPDIR", name, data) == kVersion + "\\HELPDIR|timed|" + name + "|" + data + "\n");
    }
}

TEST_CASE("a library's rows come version by version, the help folder before the locales") {
    CScratchRegistry registry;
    for (const char* tail :
         {"1.0\\9\\Win32", "1.0\\0\\Win32", "1.0\\0\\Win16", "1.0\\HELPDIR", "2.0\\HELPDIR"})
        registry.Add(HKEY_CLASSES_ROOT, std::string("TypeLib\\{L}\\") + tail);
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{K}");
    CHECK(
        RowsOf(&CheckTypeLibraries) ==
        Lines({"\\HKEY_CLASSES_ROOT\\TypeLib\\{K}|timed||", kVersion + "\\HELPDIR|timed||",
               kVersion + "\\0\\Win16|timed||", kVersion + "\\0\\Win32|timed||",
               kVersion + "\\9\\Win32|timed||", "\\HKEY_CLASSES_ROOT\\TypeLib\\{L}\\2.0\\HELPDIR|timed||"}));
}

TEST_CASE("keys of a type library that grant reading alone are passed over") {
    CScratchRegistry registry;
    for (const char* path : {"{A}", "{B}\\1.0\\HELPDIR", "{B}\\1.0\\0\\Win16"})
        registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, std::string("TypeLib\\") + path));
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{C}\\1.0\\HELPDIR");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{C}\\1.0"));
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{D}\\1.0\\9\\Win32");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{D}\\1.0\\9"));
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{L}\\1.0\\0\\Win32");
    CHECK(RowsOf(&CheckTypeLibraries) == kVersion + "\\0\\Win32|timed||\n");
}
