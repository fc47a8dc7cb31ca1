#include <doctest/doctest.h>

#include <windows.h>

#include <string>

#include "scan_support.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/write_times.h"

namespace {

std::string Padded(const std::string& start, std::size_t length, const std::string& end = "") {
    return start + std::string(length - start.size() - end.size(), 'p') + end;
}

}  // namespace

TEST_CASE("a quoted program that is gone gives one row of key path, write time, value name and path") {
    CScratchKey key;
    const HKEY child = key.Add("any");
    SetText(child, "x", "\"C:\\gone\\app.exe\" /s");
    CRecordingView view;
    CHECK(Scan(view, key).inTime);
    const std::vector<ViewEvent> rows = view.Rows();
    REQUIRE(rows.size() == 1);
    CHECK(rows[0].key == key.Path() + "\\any");
    CHECK(rows[0].writeTime == UtcText(KeyWriteTime(child)));
    CHECK(rows[0].valueName == "x");
    CHECK(rows[0].data == "C:\\gone\\app.exe");
}

TEST_CASE("a value whose name is a dead path gives one row with the name as name and as reference") {
    CHECK(RowsOfValue("C:\\gone\\lib.dll", "") == "C:\\gone\\lib.dll|C:\\gone\\lib.dll\n");
}

TEST_CASE("a value whose data and name both hold a dead path gives two rows, the data's first") {
    CHECK(RowsOfValue("C:\\gone\\name.dll", "C:\\gone\\data.dll") ==
          "C:\\gone\\name.dll|C:\\gone\\data.dll\nC:\\gone\\name.dll|C:\\gone\\name.dll\n");
}

TEST_CASE("a name is shown as its own extraction leaves it, and before that as it is stored") {
    CHECK(RowsOfValue("C:\\gone\\app.exe -x", "") == "C:\\gone\\app.exe|C:\\gone\\app.exe\n");
    CHECK(RowsOfValue("C:\\gone\\app.exe -x", "C:\\gone\\data.dll") ==
          "C:\\gone\\app.exe -x|C:\\gone\\data.dll\nC:\\gone\\app.exe|C:\\gone\\app.exe\n");
    CHECK(RowsOfValue("C:\\gone\\lib.dll\\2", "") == "C:\\gone\\lib.dll|C:\\gone\\lib.dll\n");
}

TEST_CASE("prefixes and variables are taken off data only, not off names") {
    CHECK(RowsOfValue("@C:\\gone\\a.dll", "") == "");
    CHECK(RowsOfValue("%SystemRoot%\\gone.dll", "") == "");
}

TEST_CASE("references to files and folders that exist give no row") {
    const CScratchFolder folder;
    const std::string file = folder.AddFile("a.dll");
    CHECK(RowsOfValue("x", file) == "");
    CHECK(RowsOfValue("x", folder.Path()) == "");
    CHECK(RowsOfValue(file, "") == "");
    CHECK(RowsOfValue(file, "C:\\gone\\b.dll") == file + "|C:\\gone\\b.dll\n");
    CHECK(RowsOfValue("C:\\gone\\b.dll", file) == "C:\\gone\\b.dll|C:\\gone\\b.dll\n");
}

TEST_CASE("the default value is examined like any other and has an empty name") {
    CHECK(RowsOfValue("", "C:\\gone\\a.dll") == "|C:\\gone\\a.dll\n");
}

TEST_CASE("data of every type are read as text up to the first zero") {
    for (DWORD type : {DWORD{REG_SZ}, DWORD{REG_EXPAND_SZ}, DWORD{REG_BINARY}, DWORD{REG_NONE}, DWORD{77}}) {
        CAPTURE(type);
        CHECK(RowsOfValue("x", "C:\\gone\\a.dll", type) == "x|C:\\gone\\a.dll\n");
    }
    CScratchKey key;
    SetBytes(key.Get(), "binary", REG_BINARY, std::string("C:\\gone\\b\0C:\\c", 15));
    SetBytes(key.Get(), "list", REG_MULTI_SZ, std::string("C:\\gone\\m\0C:\\gone\\n\0\0", 21));
    SetBytes(key.Get(), "number", REG_DWORD, "C:\\d");
    CHECK(RowsOf(key) == "binary|C:\\gone\\b\nlist|C:\\gone\\m\nnumber|C:\\d\n");
}

TEST_CASE("data of exactly 260 bytes without a zero are read to their last byte and not beyond") {
    CScratchKey key;
    const std::string path = Padded("C:\\gone\\", 259);
    SetBytes(key.Get(), "a", REG_BINARY, path + ",");
    CHECK(RowsOf(key) == "a|" + path + "\n");
    SetBytes(key.Get(), "a", REG_BINARY, path + "p");  // the path itself would need 260 characters
    CHECK(RowsOf(key) == "");
}

TEST_CASE("data of 261 bytes do not fit, and neither they nor the value's name are seen") {
    CScratchKey key;
    SetBytes(key.Get(), "C:\\gone\\name.dll", REG_BINARY, Padded("C:\\gone\\a,", 261));
    CHECK(RowsOf(key) == "");
    SetBytes(key.Get(), "C:\\gone\\name.dll", REG_BINARY, Padded("C:\\gone\\a,", 260));
    CHECK(RowsOf(key) == "C:\\gone\\name.dll|C:\\gone\\a\nC:\\gone\\name.dll|C:\\gone\\name.dll\n");
}

TEST_CASE("text of 259 characters and its terminator fit, and a path may be that long") {
    const std::string path = Padded("C:\\gone\\", 259);
    CHECK(RowsOfValue("x", path) == "x|" + path + "\n");
    CHECK(RowsOfValue("x", path + "p") == "");
}

TEST_CASE("a value that does not fit does not hide the next one") {
    CScratchKey key;
    SetBytes(key.Get(), "a", REG_BINARY, Padded("C:\\gone\\a,", 300));
    SetText(key.Get(), "b", "C:\\gone\\b.dll");
    CHECK(RowsOf(key) == "b|C:\\gone\\b.dll\n");
}

TEST_CASE("a name of 259 characters is seen whole") {
    const std::string name = Padded("C:\\gone\\", 259);
    CHECK(RowsOfValue(name, "") == name + "|" + name + "\n");
}

TEST_CASE("a value whose name does not fit is examined with what the call leaves in the buffers") {
    CScratchKey key;
    SetText(key.Get(), Padded("n", 300), "C:\\gone\\a.dll");
    char name[260] = "";
    char data[260] = "";
    DWORD nameBytes = sizeof name;
    DWORD dataBytes = sizeof data;
    REQUIRE(::RegEnumValueA(key.Get(), 0, name, &nameBytes, nullptr, nullptr, reinterpret_cast<BYTE*>(data),
                            &dataBytes) == ERROR_MORE_DATA);
    const std::string left = data;
    CHECK(RowsOf(key) ==
          (left.empty() ? "" : std::string(name, strnlen(name, sizeof name)) + "|" + left + "\n"));
}

TEST_CASE("no data of a value are left over for the next one") {
    CScratchKey key;
    SetText(key.Get(), "a", "C:\\gone\\a-long-name.dll");
    SetBytes(key.Get(), "b", REG_BINARY, "C:\\gone\\b");
    SetBytes(key.Get(), "c", REG_BINARY, "");
    CHECK(RowsOf(key) == "a|C:\\gone\\a-long-name.dll\nb|C:\\gone\\b\n");
}

TEST_CASE("the page file list is skipped by its exact value name") {
    CHECK(RowsOfValue("PagingFiles", "C:\\gone\\a.dll") == "");
    for (const std::string name : {"pagingfiles", "PagingFile", "PagingFiles2", "MyPagingFiles"})
        CHECK(RowsOfValue(name, "C:\\gone\\a.dll") == name + "|C:\\gone\\a.dll\n");
}

TEST_CASE("a value whose data hold svchost is skipped with its name") {
    CHECK(RowsOfValue("x", "C:\\gone\\svchost.exe -k netsvcs") == "");
    CHECK(RowsOfValue("x", "C:\\gone\\mysvchosts\\a.dll") == "");
    CHECK(RowsOfValue("C:\\gone\\a.dll", "svchost") == "");
    CHECK(RowsOfValue("x", "C:\\gone\\SvcHost.exe") == "x|C:\\gone\\SvcHost.exe\n");
    CHECK(RowsOfValue("svchost", "C:\\gone\\a.dll") == "svchost|C:\\gone\\a.dll\n");
}
