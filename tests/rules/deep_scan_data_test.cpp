// Values as the deep scan reads them: prefixes dropped, a folder variable replaced, a path taken out.
#include <doctest/doctest.h>

#include "analysis/deep_scan_rules.h"
#include "tests/rules/extraction.h"

namespace {

constexpr std::size_t kDataBytes = 260;
constexpr std::size_t kBlockBytes = kDataBytes + 1;  // a last byte that stays zero

class CTestFolders : public CFolderSource {
public:
    [[nodiscard]] std::string_view WindowsFolder() const override { return R"(C:\WINDOWS)"; }
    [[nodiscard]] std::string_view Expand(const char* variable) const override {
        return std::string_view(variable) == "%ProgramFiles%" ? R"(C:\Program Files)" : "";
    }
};

/// The path that a value's data refer to.
std::string ReferenceIn(std::string_view data) {
    CExactBuffer block = CExactBuffer::Sized(data, kBlockBytes);
    DropPrefixes(block.Data());
    ReplaceFolderVariable(block.Room().first(kDataBytes), CTestFolders());
    CExactBuffer path = CExactBuffer::Sized("", kPathBytes, kUntouched);
    return ExtractFilePath(block.Data(), path.Room()) ? path.Text() : std::string(kNoPath);
}

}  // namespace

TEST_CASE("data of known kinds are read as the file that they name") {
    struct Row {
        std::string_view data;
        std::string_view path;
    };
    constexpr Row kRows[] = {
        {R"("C:\gone\app.exe" /s)", R"(C:\gone\app.exe)"},
        {R"(%SystemRoot%\system32\gone.dll)", R"(C:\WINDOWS\system32\gone.dll)"},
        {R"(%SystemDrive%\gone.dll)", R"(C:\gone.dll)"},
        {R"(%ProgramFiles%\App\app.exe /s)", R"(C:\Program Files\App\app.exe)"},
        {R"(x %SystemRoot%\gone.dll)", kNoPath},
        {R"("%SystemRoot%\gone.dll")", kNoPath},
        {"file:///C:/gone.htm", kNoPath},
        {R"(file:///C:\gone.htm)", R"(C:\gone.htm)"},
        {R"(file://C:\gone.htm)", R"(C:\gone.htm)"},
        {R"(@C:\gone\res.dll,-101)", R"(C:\gone\res.dll)"},
        {R"(@%SystemRoot%\system32\res.dll,-101)", R"(C:\WINDOWS\system32\res.dll)"},
        {R"(\??\C:\gone\drv.sys)", R"(C:\gone\drv.sys)"},
        {R"(C:\gone\a@b.txt)", kNoPath},
        {R"(,FileRenameShortToLong C:\gone\GONE~1.DLL,gone.dll)", R"(C:\gone\GONE~1.DLL)"},
        {R"([F00000000][T01C9D2A3B4C5D6E7]*C:\gone\app.exe)", R"(C:\gone\app.exe)"},
        {"", kNoPath},
    };
    for (const Row& row : kRows) {
        CAPTURE(row.data);
        CHECK(ReferenceIn(row.data) == row.path);
    }
}

TEST_CASE("a value's name may be the reference") {
    CHECK(Extract(R"(C:\gone\lib.dll)").path == R"(C:\gone\lib.dll)");
    CHECK(Extract(R"(C:\gone\lib.dll)").text == R"(C:\gone\lib.dll)");
}

TEST_CASE("a name with arguments is shown as its own extraction leaves it") {
    CHECK(Extract(R"(C:\gone\app.exe -x)").text == R"(C:\gone\app.exe)");
}

TEST_CASE("data that fill their 260 bytes without a terminator are read to their end and no further") {
    CHECK(ReferenceIn(R"(C:\)" + Letters(256)) == R"(C:\)" + Letters(256));  // 259 characters
    CHECK(ReferenceIn(R"(C:\)" + Letters(257)) == kNoPath);                  // 260
    CHECK(ReferenceIn(R"(C:\)" + Letters(256) + ",") == R"(C:\)" + Letters(256));
    CHECK(ReferenceIn(R"(@C:\)" + Letters(256)) == R"(C:\)" + Letters(256));
    CHECK(ReferenceIn("%SystemRoot%\\" + Letters(247)) == "C:\\WINDOWS\\" + Letters(247));
    CHECK(ReferenceIn(R"("C:\)" + Letters(256)) == kNoPath);
    CHECK(ReferenceIn(R"(C:\)" + Letters(248) + ".exe -xyz") == kNoPath);
    CHECK(ReferenceIn(R"(C:\)" + Letters(247) + ".exe -xyz") == R"(C:\)" + Letters(247) + ".exe");
}
