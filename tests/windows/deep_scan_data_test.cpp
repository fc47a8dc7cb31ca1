#include <doctest/doctest.h>

#include <string>

#include "scan_support.h"
#include "tests/support/scratch_folder.h"

TEST_CASE("the path is taken out of data as its quotes and delimiters say") {
    struct {
        const char* data;
        const char* reference;
    } const rows[] = {
        {"\"C:\\Program Files\\Gone\\app.exe\" -run", "C:\\Program Files\\Gone\\app.exe"},
        {"C:\\gone\\rundll32.exe shell32.dll,Control", "C:\\gone\\rundll32.exe"},
        {"C:\\gone;b", "C:\\gone"},
        {"C:\\gone*b", ""},
        {"\\\\server\\share\\x", ""},
        {"app.exe", ""},
        {"C:\\gone\\lib.dll\\1", "C:\\gone\\lib.dll"},
        {"C:gone.dll", ""},
        {"", ""},
    };
    for (const auto& row : rows) {
        CAPTURE(row.data);
        CHECK(ReferenceOf(row.data) == row.reference);
    }
}

TEST_CASE("each known prefix is dropped") {
    struct {
        const char* data;
        const char* reference;
    } const rows[] = {
        {",FileRenameShortToLong C:\\gone\\a.dll", "C:\\gone\\a.dll"},
        {",FileRenameShortToLongC:\\gone\\a.dll", ""},  // its trailing blank belongs to it
        {"[F00000000][T01C9D5A6B7C8D9E0]*C:\\gone\\a.exe", "C:\\gone\\a.exe"},
        {"file:///C:\\gone\\a.htm", "C:\\gone\\a.htm"},
        {"file://C:\\gone\\a.htm", "C:\\gone\\a.htm"},
        {"\\??\\C:\\gone\\a.sys", "C:\\gone\\a.sys"},
        {"@C:\\gone\\res.dll,-101", "C:\\gone\\res.dll"},
        {"file:///C:/gone.htm", ""},  // no backslash behind the drive
    };
    for (const auto& row : rows) {
        CAPTURE(row.data);
        CHECK(ReferenceOf(row.data) == row.reference);
    }
}

TEST_CASE("a prefix found in the middle drops as many characters from the start") {
    CHECK(ReferenceOf("C:\\gone\\a@b.dll") == "");
    CHECK(ReferenceOf("1C:\\gone\\a@b.dll") == "C:\\gone\\a@b.dll");
    CHECK(ReferenceOf("1234C:\\gone\\\\??\\b.dll") == "C:\\gone\\\\??\\b.dll");
    // Dropped as "file:///" and then, for that is still there, as "file://".
    CHECK(ReferenceOf("12345678"
                      "1234567"
                      "C:\\gone\\file:///x") == "C:\\gone\\file:");
    CHECK(ReferenceOf(std::string(31, 'p') + "C:\\gone\\(F)[F00000000][b") == "C:\\gone\\(F)");
    CHECK(ReferenceOf(std::string(23, 'p') + "C:\\gone\\a,FileRenameShortToLong ") == "C:\\gone\\a");
}

TEST_CASE("the prefixes are dropped in order, each from what the one before left") {
    struct {
        const char* data;
        const char* reference;
    } const rows[] = {
        {"\\??\\@C:\\gone\\a", "C:\\gone\\a"},
        {"file://\\??\\C:\\gone\\a", "C:\\gone\\a"},
        {"file:///file://C:\\gone\\a", "C:\\gone\\a"},
        {"[F00000000][T01C9D5A6B7C8D9E0]*file:///C:\\gone\\a", "C:\\gone\\a"},
        {",FileRenameShortToLong [F00000000][T01C9D5A6B7C8D9E0]*C:\\gone\\a", "C:\\gone\\a"},
        {"@file:///C:\\gone\\a", ""},  // 8 are dropped for "file:///", which leaves a slash and no "@"
    };
    for (const auto& row : rows) {
        CAPTURE(row.data);
        CHECK(ReferenceOf(row.data) == row.reference);
    }
}

TEST_CASE("dropping more characters than there are leaves the data empty, and the name is still examined") {
    for (const std::string data :
         {"@", "\\??\\", "file://", "file:///", "[F00000000][", "[F00000000][T01C9"}) {
        CAPTURE(data);
        CHECK(RowsOfValue("C:\\gone\\n", data) == "C:\\gone\\n|C:\\gone\\n\n");
    }
}

TEST_CASE("%SystemRoot% at the start stands for the Windows folder, whatever the environment says") {
    const CScratchVariable root("SystemRoot", "D:\\elsewhere");
    CHECK(ReferenceOf("%SystemRoot%\\system32\\gone.dll") == TheWindowsFolder() + "\\system32\\gone.dll");
    CHECK(ReferenceOf("%SystemRoot%\\notepad.exe") == "");
    CHECK(ReferenceOf("@%SystemRoot%\\gone.dll,-1") == TheWindowsFolder() + "\\gone.dll");
}

TEST_CASE("a variable anywhere but at the start is not expanded") {
    CHECK(ReferenceOf("x %SystemRoot%\\gone.dll") == "");
    CHECK(ReferenceOf("\"%SystemRoot%\\gone.dll\"") == "");
    CHECK(ReferenceOf("C:\\gone\\%windir%\\a") == "C:\\gone\\%windir%\\a");
}

TEST_CASE("%SystemDrive% stands for the Windows folder's drive where no %SystemRoot% is in the data") {
    const CScratchVariable drive("SystemDrive", "Q:");
    CHECK(ReferenceOf("%SystemDrive%\\gone\\a") == TheWindowsFolder().substr(0, 2) + "\\gone\\a");
    CHECK(ReferenceOf("%SystemDrive%\\gone\\%SystemRoot%") == "");
    CHECK(ReferenceOf("%systemdrive%\\gone\\a") == "");
    CHECK(ReferenceOf("%SYSTEMDRIVE%\\gone\\a") == "");
}

TEST_CASE("each of the other variables stands for what the environment says, in its exact spelling") {
    const CScratchVariable root("SystemRoot", "Q:\\root");
    const CScratchVariable profile("USERPROFILE", "Q:\\profile");
    const CScratchVariable windows("windir", "Q:\\windows");
    const CScratchVariable programs("ProgramFiles", "Q:\\programs");
    const CScratchVariable data("APPDATA", "Q:\\data");
    struct {
        const char* token;
        const char* folder;
    } const rows[] = {
        {"%systemroot%", "Q:\\root"},     {"%SYSTEMROOT%", "Q:\\root"},
        {"%USERPROFILE%", "Q:\\profile"}, {"%UserProfile%", "Q:\\profile"},
        {"%WinDir%", "Q:\\windows"},      {"%WINDIR%", "Q:\\windows"},
        {"%windir%", "Q:\\windows"},      {"%ProgramFiles%", "Q:\\programs"},
        {"%APPDATA%", "Q:\\data"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.token);
        CHECK(ReferenceOf(row.token + std::string("\\a.dll")) == row.folder + std::string("\\a.dll"));
    }
    for (const char* token : {"%Systemroot%", "%userprofile%", "%Windir%", "%programfiles%", "%PROGRAMFILES%",
                              "%AppData%", "%TEMP%", "%ALLUSERSPROFILE%"}) {
        CAPTURE(token);
        CHECK(ReferenceOf(token + std::string("\\a.dll")) == "");
    }
}

TEST_CASE("%UserProfile% is left alone where %USERPROFILE% is in the data too") {
    CHECK(ReferenceOf("%UserProfile%\\gone\\a") != "");
    CHECK(ReferenceOf("%UserProfile%\\gone\\%USERPROFILE%") == "");
}

TEST_CASE("what a variable brings is seen by the variables behind it in the order, and by none before it") {
    const CScratchVariable data("APPDATA", "%windir%\\data");
    const CScratchVariable windows("windir", "%ProgramFiles%\\windows");
    const CScratchVariable programs("ProgramFiles", "Q:\\programs");
    CHECK(ReferenceOf("%windir%\\a") == "Q:\\programs\\windows\\a");
    CHECK(ReferenceOf("%APPDATA%\\a") == "");
    const CScratchVariable profile("USERPROFILE", "%WinDir%");
    CHECK(ReferenceOf("%USERPROFILE%\\a") == "Q:\\programs\\windows\\a");
    const CScratchVariable root("SystemRoot", "%SYSTEMROOT%");
    CHECK(ReferenceOf("%systemroot%\\a") == "");
}

TEST_CASE("a variable that is not set stays as it is") {
    const CScratchVariable data("APPDATA", std::nullopt);
    CHECK(ReferenceOf("%APPDATA%\\a") == "");
}

TEST_CASE("a replacement is made where its result fits the buffer, and left out where it does not") {
    const std::string folder = "C:\\gone\\" + std::string(120, 'f');
    const CScratchVariable data("APPDATA", folder);
    for (const std::size_t length : {200U, 258U, 259U, 260U, 300U}) {
        CAPTURE(length);
        const std::string rest = "\\" + std::string(length - folder.size() - 1, 'r');
        CHECK(ReferenceOf("%APPDATA%" + rest) == (length <= 259 ? folder + rest : ""));
        // Here the path itself would fit even behind the replacement that does not.
        const std::string shorter = rest.substr(0, rest.size() - 2);
        CHECK(ReferenceOf("%APPDATA%" + shorter + ",x") == (length <= 259 ? folder + shorter : ""));
    }
}
