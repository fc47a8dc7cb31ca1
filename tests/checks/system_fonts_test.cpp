// The list of installed fonts.
#include <windows.h>

#include <doctest/doctest.h>

#include <shlobj.h>
#include <shlwapi.h>

#include <string>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "platform/owners.h"
#include "system_areas.h"
#include "tests/support/scratch_folder.h"

namespace {

std::string FontsFolder() {
    char folder[MAX_PATH] = "";
    REQUIRE(::SHGetFolderPathA(nullptr, CSIDL_FONTS, nullptr, 0, folder) == S_OK);
    return folder;
}

/// An empty file of the fonts folder; removed at the end. The folder is made where it is not there yet.
class CScratchFont {
public:
    explicit CScratchFont(const std::string& name) : m_path(FontsFolder() + "\\" + name) {
        ::CreateDirectoryA(FontsFolder().c_str(), nullptr);
        const CUniqueFile file(
            ::CreateFileA(m_path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        REQUIRE(static_cast<bool>(file));
    }
    CScratchFont(const CScratchFont&) = delete;
    CScratchFont& operator=(const CScratchFont&) = delete;
    ~CScratchFont() { ::DeleteFileA(m_path.c_str()); }

private:
    std::string m_path;
};

}  // namespace

TEST_CASE("a font whose file is in the fonts folder is not reported") {
    const CScratchFont font("vellumor-test.ttf");
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "Here (TrueType)", "vellumor-test.ttf");
    one.area.Add("", "Gone (TrueType)", "vellumor-gone.ttf");
    CHECK(RowsOf(&CheckFonts) == Lines({one.area.Untimed("", "Gone (TrueType)", "vellumor-gone.ttf")}));
}

TEST_CASE("fonts of another type than REG_SZ are skipped") {
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "a", "vellumor-gone.ttf", REG_EXPAND_SZ);
    one.area.Add("", "b", "vellumor-gone.ttf", REG_BINARY);
    one.area.Add("", "c", "vellumor-gone.ttf", REG_MULTI_SZ);
    CHECK(RowsOf(&CheckFonts).empty());
}

TEST_CASE("a font file named by its own path is reported because it exists") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("x.ttf");
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "own path", file);
    char joined[MAX_PATH] = "";
    ::lstrcpynA(joined, FontsFolder().c_str(), sizeof joined);
    const bool found = ::PathAppendA(joined, file.c_str()) != FALSE && Exists(joined);
    const std::string row = one.area.Untimed("", "own path", file);
    CHECK(RowsOf(&CheckFonts) == (found ? Lines({row}) : Lines({row, row})));
}

TEST_CASE("a font may fail both tests, each with its row") {
    // In the current folder, so the data by themselves name a file that the fonts folder lacks.
    const CScratchFolder scratch;
    (void)scratch.AddFile("vellumor-here.ttf");
    char before[MAX_PATH];
    REQUIRE(::GetCurrentDirectoryA(sizeof before, before) != 0);
    ::SetCurrentDirectoryA(scratch.Path().c_str());
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "twice", "vellumor-here.ttf");
    const std::string row = one.area.Untimed("", "twice", "vellumor-here.ttf");
    CHECK(RowsOf(&CheckFonts) == Lines({row, row}));
    ::SetCurrentDirectoryA(before);
}

TEST_CASE("a font without a file name names the fonts folder itself, which exists") {
    const CScratchFont font("vellumor-test.ttf");
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "empty", "");
    CHECK(RowsOf(&CheckFonts).empty());
}

TEST_CASE("a font path in a folder that is gone is reported once") {
    OneArea one(HKEY_LOCAL_MACHINE, kFontsArea);
    one.area.Add("", "gone", "C:\\gone\\x.ttf");
    CHECK(RowsOf(&CheckFonts) == Lines({one.area.Untimed("", "gone", "C:\\gone\\x.ttf")}));
}
