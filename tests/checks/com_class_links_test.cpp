#include <doctest/doctest.h>

#include "analysis/com/com_checks.h"
#include "check_support.h"

namespace {

// Refused by the system with another code than "not found".
const std::string kRefused(300, 'x');

const std::string kClass = "\\HKEY_CLASSES_ROOT\\CLSID\\{X}";

/// A registry with keys for links to lead to.
class CLinkTargets : public CScratchRegistry {
public:
    CLinkTargets() {
        for (const char* path : {"Here.Class", "AppID\\{here}", "TypeLib\\{here}"})
            Add(HKEY_CLASSES_ROOT, path);
        for (const char* path : {"Readable.Class", "AppID\\{readable}", "TypeLib\\{readable}"})
            MakeReadOnly(Add(HKEY_CLASSES_ROOT, path));
        Lock(Add(HKEY_CLASSES_ROOT, "TypeLib\\{locked}"));
    }
};

/// The rows about one class with one value.
std::string RowsOfLink(Check check, const std::string& tail, const std::string& name,
                       const std::string& data) {
    CLinkTargets registry;
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}" + tail, name, data);
    return RowsOf(check);
}

std::string RowsOfProgId(const std::string& progId) {
    return RowsOfLink(&CheckClassLinks, "\\ProgID", "", progId);
}

std::string RowsOfVersionIndependent(const std::string& name, const std::string& data) {
    return RowsOfLink(&CheckClassLinks, "\\VersionIndependentProgID", name, data);
}

std::string RowsOfAppId(const std::string& id) { return RowsOfLink(&CheckClassLinks, "", "AppID", id); }

std::string RowsOfLibrary(const std::string& library) {
    return RowsOfLink(&CheckClassTypeLibLinks, "\\TypeLib", "", library);
}

}  // namespace

TEST_CASE("a class key without values and subkeys is reported among the class links") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{Default}", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{Named}", "x", "");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{Large}", std::string(300, 'n'), std::string(5000, 'd'));
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{Subkey}\\x");
    CHECK(RowsOf(&CheckClassLinks) == kClass + "|timed||\n");
}

TEST_CASE("a class's ProgID link must open as a key, a refused one counts as missing") {
    const std::string row = kClass + "\\ProgID|timed||";
    CHECK(RowsOfProgId("Gone.Class") == row + "Gone.Class\n");
    CHECK(RowsOfProgId("Here.Class").empty());
    CHECK(RowsOfProgId("Readable.Class").empty());
    CHECK(RowsOfProgId(kRefused) == row + kRefused + "\n");
    CHECK(RowsOfProgId("").empty());
    CHECK(RowsOfLink(&CheckClassLinks, "\\ProgID", "named", "Gone.Class").empty());
    CHECK(RowsOfLink(&CheckClassLinks, "\\Progid", "", "Gone.Class") == row + "Gone.Class\n");
}

TEST_CASE("a class's version-independent ProgID must open as a key when it is the first value") {
    const std::string row = kClass + "\\VersionIndependentProgID|timed||";
    CHECK(RowsOfVersionIndependent("", "Gone.Class") == row + "Gone.Class\n");
    CHECK(RowsOfVersionIndependent("", "Here.Class").empty());
    CHECK(RowsOfVersionIndependent("", "Readable.Class").empty());
    CHECK(RowsOfVersionIndependent("", kRefused) == row + kRefused + "\n");
    CHECK(RowsOfVersionIndependent("", "").empty());
    CHECK(RowsOfVersionIndependent("named", "Gone.Class").empty());
}

TEST_CASE("a version-independent ProgID key without values is passed over") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\VersionIndependentProgID");
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ProgID");
    CHECK(RowsOf(&CheckClassLinks).empty());
}

TEST_CASE("a class's application id must be registered, a refused one counts as there") {
    const std::string row = kClass + "|timed|AppID|";
    CHECK(RowsOfAppId("{Y}") == row + "{Y}\n");
    CHECK(RowsOfAppId("{here}").empty());
    CHECK(RowsOfAppId("{readable}").empty());
    CHECK(RowsOfAppId(kRefused).empty());
    CHECK(RowsOfAppId("here") == row + "here\n");  // no braces are added
    CHECK(RowsOfAppId("").empty());
    CHECK(RowsOfLink(&CheckClassLinks, "", "", "{Y}").empty());
    CHECK(RowsOfLink(&CheckClassLinks, "", "appid", "{Y}") == row + "{Y}\n");  // queried in any letter case
}

TEST_CASE("a class's type library must be registered, a refused one counts as there") {
    const std::string row = kClass + "\\TypeLib|timed||";
    CHECK(RowsOfLibrary("{gone}") == row + "{gone}\n");
    CHECK(RowsOfLibrary("gone") == row + "gone\n");
    CHECK(RowsOfLibrary("{here}").empty());
    CHECK(RowsOfLibrary("here").empty());
    CHECK(RowsOfLibrary("{here") == row + "{here\n");  // looked up as it stands
    CHECK(RowsOfLibrary("{readable}").empty());
    CHECK(RowsOfLibrary("{locked}").empty());
    CHECK(RowsOfLibrary(kRefused).empty());
    CHECK(RowsOfLibrary("").empty());
    CHECK(RowsOfLink(&CheckClassTypeLibLinks, "\\TypeLib", "named", "{gone}").empty());
    CHECK(RowsOfLink(&CheckClassTypeLibLinks, "\\TypeLib\\1.0", "", "{gone}").empty());
}

TEST_CASE("class links of 300 and of 5000 bytes are read whole") {
    // An endless name is no key's name, and so it is refused rather than not found.
    for (const std::size_t length :
         {std::size_t{99}, std::size_t{100}, std::size_t{300}, std::size_t{5000}}) {
        const std::string progId(length, 'x');
        CHECK(RowsOfProgId(progId) == kClass + "\\ProgID|timed||" + progId + "\n");
        CHECK(RowsOfVersionIndependent("", progId) ==
              kClass + "\\VersionIndependentProgID|timed||" + progId + "\n");
    }
    for (const std::size_t length : {std::size_t{99}, std::size_t{100}, std::size_t{200}}) {
        const std::string id(length, 'x');
        CHECK(RowsOfAppId(id) == kClass + "|timed|AppID|" + id + "\n");
        CHECK(RowsOfLibrary(id) == kClass + "\\TypeLib|timed||" + id + "\n");
    }
}

TEST_CASE("links whose long text begins with a key that exists are judged by the whole text") {
    const std::string deep = "Here.Class\\" + std::string(100, 'a') + "\\" + std::string(100, 'b');
    CLinkTargets registry;
    registry.Add(HKEY_CLASSES_ROOT, deep);
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ProgID", "", deep);
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{Z}\\ProgID", "", deep + "c");
    CHECK(RowsOf(&CheckClassLinks) == "\\HKEY_CLASSES_ROOT\\CLSID\\{Z}\\ProgID|timed||" + deep + "c\n");
}

TEST_CASE("a class's links are reported in their order, class by class") {
    CScratchRegistry registry;
    const HKEY key = registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}", "AppID", "{Y}");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\VersionIndependentProgID", "", "Gone");
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{X}\\ProgID", "", "Gone.1");
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{W}");
    CHECK(RowsOf(&CheckClassLinks) ==
          Lines({"\\HKEY_CLASSES_ROOT\\CLSID\\{W}|timed||", kClass + "\\ProgID|timed||Gone.1",
                 kClass + "\\VersionIndependentProgID|timed||Gone", kClass + "|timed|AppID|{Y}"}));
    registry.MakeReadOnly(key);
    CHECK(RowsOf(&CheckClassLinks) == "\\HKEY_CLASSES_ROOT\\CLSID\\{W}|timed||\n");
}

TEST_CASE("link keys that grant reading alone are passed over") {
    CScratchRegistry registry;
    for (const char* link : {"ProgID", "VersionIndependentProgID", "TypeLib"})
        registry.MakeReadOnly(
            registry.AddText(HKEY_CLASSES_ROOT, std::string("CLSID\\{X}\\") + link, "", "Gone"));
    CHECK(RowsOf(&CheckClassLinks).empty());
    CHECK(RowsOf(&CheckClassTypeLibLinks).empty());
}
