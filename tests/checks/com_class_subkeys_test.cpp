#include <doctest/doctest.h>

#include "analysis/com/com_checks.h"
#include "check_support.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr const char* kModules[] = {"InprocHandler", "InprocHandler32", "InprocServer",
                                    "LocalServer",   "LocalServer32",   "DefaultIcon"};
constexpr const char* kGone = "C:\\gone\\x.dll";

std::string RowOf(const std::string& family, const std::string& name, const std::string& data) {
    return "\\HKEY_CLASSES_ROOT\\CLSID\\{X}\\" + family + "|timed|" + name + "|" + data + "\n";
}

/// The rows about a class with one subkey, which `plant` fills.
template <class Plant>
std::string RowsOfFamily(const std::string& family, Plant plant) {
    CScratchRegistry registry;
    plant(registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\" + family));
    return RowsOf(&CheckClassSubkeys);
}

std::string RowsOfDefault(const std::string& family, const std::string& data) {
    return RowsOfFamily(family, [&](HKEY key) { SetText(key, "", data); });
}

std::string RowsOfNamed(const std::string& family, const std::string& data) {
    return RowsOfFamily(family, [&](HKEY key) { SetText(key, "ThreadingModel", data); });
}

std::string RowsOfNothing(const std::string& family) {
    return RowsOfFamily(family, [](HKEY) {});
}

/// The rows of a class's ProgID; "Here.Class" is a key, "Locked.Class" one that nobody may open.
std::string RowsOfProgId(const std::string& progId) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "Here.Class");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Readable.Class"));
    registry.Lock(registry.Add(HKEY_CLASSES_ROOT, "Locked.Class"));
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ProgID", "", progId);
    return RowsOf(&CheckClassSubkeys);
}

}  // namespace

TEST_CASE("a module key whose default value names no file is reported with it") {
    const CScratchFolder folder;
    const std::string module = folder.AddFile("here.dll");
    for (const char* family : kModules) {
        CAPTURE(family);
        CHECK(RowsOfDefault(family, kGone) == RowOf(family, "", kGone));
        CHECK(RowsOfDefault(family, module).empty());
        CHECK(RowsOfDefault(family, module + ",-101").empty());  // judged as a command
        CHECK(RowsOfDefault(family, "kernel32.dll").empty());
    }
}

TEST_CASE("a module key that holds nothing is reported once, as an empty key") {
    for (const char* family : kModules) {
        CAPTURE(family);
        CHECK(RowsOfNothing(family) == RowOf(family, "", ""));
        CHECK(RowsOfDefault(family, "") == RowOf(family, "", ""));
    }
}

TEST_CASE("a module key whose subkeys hold nothing is an empty key, any value below makes it none") {
    for (const char* family : kModules) {
        CAPTURE(family);
        CScratchRegistry registry;
        registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\" + std::string(family) + "\\a\\b");
        CHECK(RowsOf(&CheckClassSubkeys) == RowOf(family, "", ""));
        registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\" + std::string(family) + "\\a\\b", "x", "");
        CHECK(RowsOf(&CheckClassSubkeys).empty());
    }
}

TEST_CASE("named values of a module key are never tested") {
    for (const char* family : kModules) {
        CAPTURE(family);
        CHECK(RowsOfNamed(family, kGone).empty());
        CHECK(RowsOfNamed(family, "").empty());
    }
}

TEST_CASE("an in-process server must be named and exist") {
    const CScratchFolder folder;
    CHECK(RowsOfDefault("InprocServer32", kGone) == RowOf("InprocServer32", "", kGone));
    CHECK(RowsOfDefault("InprocServer32", folder.AddFile("here.dll")).empty());
    CHECK(RowsOfDefault("InprocServer32", "") == RowOf("InprocServer32", "", ""));
    CHECK(RowsOfNothing("InprocServer32") == RowOf("InprocServer32", "", ""));
    CHECK(RowsOfNamed("InprocServer32", "Apartment") == RowOf("InprocServer32", "", ""));
    const std::string both = RowsOfFamily("InprocServer32", [](HKEY key) {
        SetText(key, "", "kernel32.dll");
        SetText(key, "ThreadingModel", kGone);
    });
    CHECK(both.empty());
}

TEST_CASE("a ShellEx key without subkeys is reported in every round of its values") {
    CHECK(RowsOfNothing("ShellEx") == RowOf("ShellEx", "", ""));
    CHECK(RowsOfDefault("ShellEx", "") == RowOf("ShellEx", "", ""));
    CHECK(RowsOfDefault("ShellEx", "kernel32.dll") == RowOf("ShellEx", "", "kernel32.dll"));
    const std::string named = RowsOfFamily("ShellEx", [](HKEY key) {
        SetText(key, "a", "1");
        SetText(key, "b", "");
    });
    CHECK(named == RowOf("ShellEx", "a", "1") + RowOf("ShellEx", "b", "") + RowOf("ShellEx", "", ""));
}

TEST_CASE("a ShellEx key's missing module gives a row besides the one of its emptiness") {
    const std::string row = RowOf("ShellEx", "", kGone);
    CHECK(RowsOfDefault("ShellEx", kGone) == row + row);
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ShellEx", "", kGone);
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ShellEx\\IconHandler");
    CHECK(RowsOf(&CheckClassSubkeys) == row);
}

TEST_CASE("a ShellEx key with a subkey is not empty, whatever the subkey holds") {
    CHECK(RowsOfFamily("ShellEx\\IconHandler", [](HKEY) {}).empty());
    CHECK(RowsOfFamily("ShellEx\\IconHandler", [](HKEY key) { SetText(key, "", kGone); }).empty());
}

TEST_CASE("a toolbox picture must be named, and no file is tested") {
    CHECK(RowsOfDefault("ToolBoxBitmap32", "") == RowOf("ToolBoxBitmap32", "", ""));
    CHECK(RowsOfNothing("ToolBoxBitmap32") == RowOf("ToolBoxBitmap32", "", ""));
    CHECK(RowsOfNamed("ToolBoxBitmap32", "x") == RowOf("ToolBoxBitmap32", "", ""));
    CHECK(RowsOfDefault("ToolBoxBitmap32", kGone).empty());
}

TEST_CASE("a class's ProgID must be a key; one that is refused counts as there") {
    CHECK(RowsOfProgId("Gone.Class") == RowOf("ProgID", "", "Gone.Class"));
    CHECK(RowsOfProgId("Here.Class").empty());
    CHECK(RowsOfProgId("Readable.Class").empty());
    CHECK(RowsOfProgId("Locked.Class").empty());
    CHECK(RowsOfProgId(std::string(300, 'x')).empty());  // refused, and not "not found"
    CHECK(RowsOfProgId("").empty());
    CHECK(RowsOfProgId(std::string(150, 'x')) == RowOf("ProgID", "", std::string(150, 'x')));
    CHECK(RowsOfNothing("ProgID").empty());
    CHECK(RowsOfNamed("ProgID", "Gone.Class").empty());
}

TEST_CASE("a ProgID is reported both among a class's subkeys and among its links") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ProgID", "", "Gone.Class");
    CHECK(RowsOf(&CheckClassSubkeys) == RowOf("ProgID", "", "Gone.Class"));
    CHECK(RowsOf(&CheckClassLinks) == RowOf("ProgID", "", "Gone.Class"));
}

TEST_CASE("family names are told in any letter case, and rows show them as they are stored") {
    for (const char* family : {"inprochandler", "INPROCHANDLER32", "inprocServer", "InProcServer32",
                               "localserver", "LOCALSERVER32", "defaulticon", "progid"}) {
        CAPTURE(family);
        CHECK(RowsOfDefault(family, kGone) == RowOf(family, "", kGone));
    }
    CHECK(RowsOfDefault("shellex", "") == RowOf("shellex", "", ""));
    CHECK(RowsOfDefault("ToolboxBitmap32", "") == RowOf("ToolboxBitmap32", "", ""));
}

TEST_CASE("subkeys of other names are passed over") {
    for (const char* name : {"InprocServer3", "InprocServer322", "LocalService", "VersionIndependentProgID",
                             "TypeLib", "shell", "Inproc-Server32"}) {
        CAPTURE(name);
        CHECK(RowsOfDefault(name, kGone).empty());
        CHECK(RowsOfNothing(name).empty());
    }
}

TEST_CASE("modules of 300 and of 5000 bytes are read whole") {
    for (const std::size_t length :
         {std::size_t{249}, std::size_t{250}, std::size_t{300}, std::size_t{5000}}) {
        CAPTURE(length);
        const std::string data = "C:\\gone\\" + std::string(length - 8, 'x');
        CHECK(RowsOfDefault("InprocServer32", data) == RowOf("InprocServer32", "", data));
        // The test of the tree reads 260 bytes; a larger default value leaves its buffers empty.
        const std::string row = RowOf("LocalServer32", "", data);
        CHECK(RowsOfDefault("LocalServer32", data) == (length < 260 ? row : row + row));
    }
}

TEST_CASE("a module of 300 or of 5000 bytes that names a file is not reported as missing") {
    const CScratchFolder folder;
    const std::string module = folder.AddFile("here.exe");
    for (const std::size_t length : {std::size_t{300}, std::size_t{5000}}) {
        const std::string data = module + " " + std::string(length, '-');
        CHECK(RowsOfDefault("InprocServer32", data).empty());
        CHECK(RowsOfDefault("LocalServer32", data) ==
              RowOf("LocalServer32", "", data));  // an empty tree, as above
    }
}

TEST_CASE("names and data of 300 and of 5000 bytes are shown whole") {
    for (const std::size_t length :
         {std::size_t{249}, std::size_t{250}, std::size_t{300}, std::size_t{5000}}) {
        const std::string name(length, 'n');
        const std::string data(length, 'd');
        const std::string rows = RowsOfFamily("ShellEx", [&](HKEY key) { SetText(key, name, data); });
        CHECK(rows == RowOf("ShellEx", name, data) + RowOf("ShellEx", "", ""));
    }
}

TEST_CASE("a class, and a subkey of one, that grants reading alone is passed over") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{A}\\LocalServer32", "", kGone);
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{A}"));
    registry.MakeReadOnly(registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\InprocServer", "", kGone));
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\LocalServer32", "", kGone);
    CHECK(RowsOf(&CheckClassSubkeys) == RowOf("LocalServer32", "", kGone));
}

TEST_CASE("the rows of class subkeys come class by class, in the order of the keys") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{B}\\InprocHandler32");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{A}\\ProgID", "", "Gone.Class");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{A}\\LocalServer32", "", kGone);
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{A}\\DefaultIcon", "", "C:\\gone\\x.ico");
    CHECK(RowsOf(&CheckClassSubkeys) ==
          Lines({"\\HKEY_CLASSES_ROOT\\CLSID\\{A}\\DefaultIcon|timed||C:\\gone\\x.ico",
                 "\\HKEY_CLASSES_ROOT\\CLSID\\{A}\\LocalServer32|timed||C:\\gone\\x.dll",
                 "\\HKEY_CLASSES_ROOT\\CLSID\\{A}\\ProgID|timed||Gone.Class",
                 "\\HKEY_CLASSES_ROOT\\CLSID\\{B}\\InprocHandler32|timed||"}));
}

TEST_CASE("a cancel during one class ends its subkeys too") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\LocalServer");
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\LocalServer32");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckClassSubkeys) == RowOf("LocalServer", "", ""));
}
