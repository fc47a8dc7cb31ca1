#include <doctest/doctest.h>

#include "analysis/classes/class_checks.h"
#include "check_support.h"

namespace {

std::string RowsOfContentType(const std::string& valueName, const std::string& data) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, ".here");
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{here}");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, ".readable"));
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{readable}"));
    registry.AddText(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\a/b", valueName, data);
    return RowsOf(&CheckMimeTypes);
}

/// The rows of a file type with this default value.
std::string RowsOfFileType(const std::string& type) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "Here");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Readable"));
    registry.AddText(HKEY_CLASSES_ROOT, ".t", "", type);
    return RowsOf(&CheckFileTypeLinks);
}

std::string RowsOfPointer(const std::string& valueName, const std::string& data) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "Here.1");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Readable.1"));
    registry.AddText(HKEY_CLASSES_ROOT, "Some.Class\\CurVer", valueName, data);
    return RowsOf(&CheckCurrentVersions);
}

std::string RowsOfAppId(const std::string& valueName, const std::string& data) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "AppID\\{here}");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "AppID\\{readable}"));
    registry.AddText(HKEY_CLASSES_ROOT, "AppID\\some.exe", valueName, data);
    return RowsOf(&CheckAppIds);
}

const std::string kTypeRow = "\\HKEY_CLASSES_ROOT\\MIME\\Database\\Content Type\\a/b|timed|";
const std::string kPointerRow = "\\HKEY_CLASSES_ROOT\\Some.Class\\CurVer|timed|";
const std::string kAppRow = "\\HKEY_CLASSES_ROOT\\AppID\\some.exe|timed|AppID|";

}  // namespace

TEST_CASE("content types that hold nothing at any level are reported") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\a/b");
    registry.AddText(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\c/d\\Bits", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\e/f\\Bits", "0", "");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\g/h"));
    CHECK(RowsOf(&CheckMimeTypes) ==
          Lines({"\\HKEY_CLASSES_ROOT\\MIME\\Database\\Content Type\\a/b|timed||",
                 "\\HKEY_CLASSES_ROOT\\MIME\\Database\\Content Type\\c/d|timed||"}));
}

TEST_CASE("a content type's extension must be a key") {
    CHECK(RowsOfContentType("Extension", ".gone") == kTypeRow + "Extension|.gone\n");
    CHECK(RowsOfContentType("Extension", ".here").empty());
    CHECK(RowsOfContentType("Extension", ".HERE").empty());
    CHECK(RowsOfContentType("Extension", ".readable").empty());
    CHECK(RowsOfContentType("Extension", "").empty());  // the root itself
    CHECK(RowsOfContentType("Encoding", ".gone").empty());
}

TEST_CASE("a content type's extension is read into 250 bytes") {
    for (const std::size_t bytes : {std::size_t{249}, std::size_t{250}}) {
        const std::string extension(bytes - 1, 'x');
        CHECK(RowsOfContentType("Extension", extension) == kTypeRow + "Extension|" + extension + "\n");
    }
    CHECK(RowsOfContentType("Extension", std::string(250, 'x')).empty());
}

TEST_CASE("a content type's class must be registered") {
    CHECK(RowsOfContentType("CLSID", "{gone}") == kTypeRow + "CLSID|{gone}\n");
    CHECK(RowsOfContentType("CLSID", "{here}").empty());
    CHECK(RowsOfContentType("CLSID", "here") == kTypeRow + "CLSID|here\n");  // no braces are added
    CHECK(RowsOfContentType("CLSID", "{readable}").empty());
    CHECK(RowsOfContentType("CLSID", "").empty());  // the key of all classes
}

TEST_CASE("a content type's class is read into 100 bytes") {
    for (const std::size_t bytes : {std::size_t{99}, std::size_t{100}}) {
        const std::string classId(bytes - 1, 'x');
        CHECK(RowsOfContentType("CLSID", classId) == kTypeRow + "CLSID|" + classId + "\n");
    }
    CHECK(RowsOfContentType("CLSID", std::string(100, 'x')).empty());
}

TEST_CASE("a content type with both links dead gives the extension's row first") {
    CScratchRegistry registry;
    const HKEY key =
        registry.AddText(HKEY_CLASSES_ROOT, "MIME\\Database\\Content Type\\a/b", "CLSID", "{gone}");
    SetText(key, "Extension", ".gone");
    CHECK(RowsOf(&CheckMimeTypes) == kTypeRow + "Extension|.gone\n" + kTypeRow + "CLSID|{gone}\n");
}

TEST_CASE("a file type's type name must be a key") {
    const std::string row = "\\HKEY_CLASSES_ROOT\\.t|timed||";
    CHECK(RowsOfFileType("Gone") == row + "Gone\n");
    CHECK(RowsOfFileType("Here\\gone") == row + "Here\\gone\n");
    CHECK(RowsOfFileType("Here").empty());
    CHECK(RowsOfFileType("Readable").empty());
    CHECK(RowsOfFileType(std::string(259, 'x')).empty());  // refused, and not "not found"
    CHECK(RowsOfFileType("").empty());
}

TEST_CASE("a file type's type name is read into 260 bytes") {
    // Names of more than 255 characters can be told only in parts.
    const auto typeOf = [](std::size_t bytes) {
        return std::string(100, 'x') + "\\" + std::string(bytes - 102, 'y');
    };
    for (const std::size_t bytes : {std::size_t{250}, std::size_t{259}, std::size_t{260}})
        CHECK(RowsOfFileType(typeOf(bytes)) == "\\HKEY_CLASSES_ROOT\\.t|timed||" + typeOf(bytes) + "\n");
    CHECK(RowsOfFileType(typeOf(261)).empty());
}

TEST_CASE("file-type keys without value and subkey are reported; a subkey or any value saves them") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, ".empty");
    registry.Add(HKEY_CLASSES_ROOT, ".subkey\\empty");
    registry.AddText(HKEY_CLASSES_ROOT, ".value", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, ".named", "x", "Gone");
    registry.AddText(HKEY_CLASSES_ROOT, ".large", "x", std::string(5000, 'x'));
    registry.AddText(HKEY_CLASSES_ROOT, "nodot", "", "Gone");
    registry.Add(HKEY_CLASSES_ROOT, "empty");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, ".readonly"));
    CHECK(RowsOf(&CheckFileTypeLinks) == "\\HKEY_CLASSES_ROOT\\.empty|timed||\n");
}

TEST_CASE("a CurVer key without a value, or with an empty default value, is reported") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "A.Class\\CurVer");
    registry.AddText(HKEY_CLASSES_ROOT, "B.Class\\CurVer", "", "");
    registry.Add(HKEY_CLASSES_ROOT, "C.Class\\CLSID");
    CHECK(RowsOf(&CheckCurrentVersions) == Lines({"\\HKEY_CLASSES_ROOT\\A.Class\\CurVer|timed||",
                                                  "\\HKEY_CLASSES_ROOT\\B.Class\\CurVer|timed||"}));
}

TEST_CASE("a CurVer key's default value must name a key; a named value does not matter") {
    CHECK(RowsOfPointer("", "Gone.1") == kPointerRow + "|Gone.1\n");
    CHECK(RowsOfPointer("", "Here.1").empty());
    CHECK(RowsOfPointer("", "Readable.1").empty());
    CHECK(RowsOfPointer("named", "Gone.1").empty());
    CHECK(RowsOfPointer("named", "").empty());
}

TEST_CASE("a current version whose key opens and then cannot be read is missing") {
    CScratchRegistry registry;
    CScratchKey link(HKEY_CLASSES_ROOT, "Holder");
    link.AddLink("Unreadable", kUnreadableKey);
    registry.AddText(HKEY_CLASSES_ROOT, "Some.Class\\CurVer", "", "Holder\\Unreadable");
    CHECK(RowsOf(&CheckCurrentVersions) == kPointerRow + "|Holder\\Unreadable\n");
}

TEST_CASE("a CurVer key's first value is read into 250 bytes, a larger one is passed over") {
    for (const std::size_t bytes : {std::size_t{249}, std::size_t{250}}) {
        const std::string version(bytes - 1, 'x');
        CHECK(RowsOfPointer("", version) == kPointerRow + "|" + version + "\n");
    }
    CHECK(RowsOfPointer("", std::string(250, 'x')).empty());
}

TEST_CASE("a class key or CurVer key without write access is passed over") {
    CScratchRegistry registry;
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "A.Class\\CurVer"));
    registry.Add(HKEY_CLASSES_ROOT, "B.Class\\CurVer");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "B.Class"));
    CHECK(RowsOf(&CheckCurrentVersions).empty());
}

TEST_CASE("a program's application id must be registered") {
    CHECK(RowsOfAppId("AppID", "{gone}") == kAppRow + "{gone}\n");
    CHECK(RowsOfAppId("AppID", "{here}").empty());
    CHECK(RowsOfAppId("AppID", "{HERE}").empty());
    CHECK(RowsOfAppId("AppID", "here") == kAppRow + "here\n");  // no braces are added
    CHECK(RowsOfAppId("AppID", "{readable}").empty());
    CHECK(RowsOfAppId("AppID", "").empty());
    CHECK(RowsOfAppId("", "{gone}").empty());
    CHECK(RowsOfAppId("LocalService", "{gone}").empty());
}

TEST_CASE("a program's application id is read into 250 bytes") {
    for (const std::size_t bytes : {std::size_t{249}, std::size_t{250}}) {
        const std::string id(bytes - 1, 'x');
        CHECK(RowsOfAppId("AppID", id) == kAppRow + id + "\n");
    }
    CHECK(RowsOfAppId("AppID", std::string(250, 'x')).empty());
}

TEST_CASE("a program's AppID key without write access is passed over") {
    CScratchRegistry registry;
    registry.MakeReadOnly(registry.AddText(HKEY_CLASSES_ROOT, "AppID\\a.exe", "AppID", "{gone}"));
    CHECK(RowsOf(&CheckAppIds).empty());
}
