#include <doctest/doctest.h>
#include <shlobj.h>

#include "analysis/classes/software_checks.h"
#include "check_support.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr const char* kOrder =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\MenuOrder\\Start Menu\\Programs";

std::string RowOf(const std::string& path, const std::string& data) {
    return "\\HKEY_CURRENT_USER\\" + std::string(kOrder) + "\\" + path + "|timed||" + data + "\n";
}

/// A folder in one of the two Start Menus; removed at the end.
class CMenuFolder {
public:
    CMenuFolder(int menu, const std::string& name) {
        char folder[MAX_PATH] = "";
        REQUIRE(::SHGetSpecialFolderPathA(nullptr, folder, menu, TRUE) != FALSE);
        m_path = std::string(folder) + "\\" + name;
        REQUIRE(::CreateDirectoryA(m_path.c_str(), nullptr) != FALSE);
    }
    CMenuFolder(const CMenuFolder&) = delete;
    CMenuFolder& operator=(const CMenuFolder&) = delete;
    ~CMenuFolder() { ::RemoveDirectoryA(m_path.c_str()); }

private:
    std::string m_path;
};

constexpr int kAllUsers = 23;
constexpr int kUser = 2;

}  // namespace

// The system keeps the Start Menus' places in the user's registry, so these tests use the real one.

TEST_CASE("order that is kept for a folder in neither Start Menu is reported") {
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    order.Add("VellumorTestGone");
    CHECK(RowsOf(&CheckStartMenuOrder) == RowOf("VellumorTestGone", "VellumorTestGone"));
}

TEST_CASE("order that is kept for a folder in either Start Menu is not reported") {
    const CMenuFolder common(kAllUsers, "VellumorTestCommon");
    const CMenuFolder user(kUser, "VellumorTestUser");
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    for (const char* name : {"VellumorTestCommon", "VellumorTestGone", "vellumortestuser"}) order.Add(name);
    CHECK(RowsOf(&CheckStartMenuOrder) == RowOf("VellumorTestGone", "VellumorTestGone"));
}

TEST_CASE("order of subfolders is looked at one level down, in both Start Menus") {
    const CMenuFolder common(kAllUsers, "VellumorTest");
    const CMenuFolder commonChild(kAllUsers, "VellumorTest\\Common");
    const CMenuFolder user(kUser, "VellumorTest");
    const CMenuFolder userChild(kUser, "VellumorTest\\User");
    const CMenuFolder elsewhere(kUser, "VellumorTestElsewhere");
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    order.Add("VellumorTest");
    for (const char* child : {"Common", "Gone", "User", "VellumorTestElsewhere", "Gone\\Deeper"})
        order.Add("VellumorTest\\" + std::string(child));
    CHECK(RowsOf(&CheckStartMenuOrder) ==
          RowOf("VellumorTest\\Gone", "Gone") +
              RowOf("VellumorTest\\VellumorTestElsewhere", "VellumorTestElsewhere"));
}

TEST_CASE("order of subfolders is looked at even when the folder itself is missing") {
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    order.Add("VellumorTestGone");
    order.Add("VellumorTestGone\\b");
    order.Add("VellumorTestGone\\a");
    order.Add("VellumorTestHither");
    CHECK(RowsOf(&CheckStartMenuOrder) ==
          RowOf("VellumorTestGone", "VellumorTestGone") + RowOf("VellumorTestGone\\a", "a") +
              RowOf("VellumorTestGone\\b", "b") + RowOf("VellumorTestHither", "VellumorTestHither"));
}

TEST_CASE("rows of subfolders show the write time of the first level") {
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    order.Add("VellumorTestGone");
    const HKEY child = order.Add("VellumorTestGone\\a");
    const std::string rows = TimedRowsOf(&CheckStartMenuOrder);
    ::Sleep(1100);
    SetText(child, "Order", "x");
    CHECK(TimedRowsOf(&CheckStartMenuOrder) == rows);
}

TEST_CASE("no order is kept: nothing is reported") { CHECK(RowsOf(&CheckStartMenuOrder).empty()); }

TEST_CASE("order in a key that grants reading alone is not looked at") {
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    CScratchKey inside(HKEY_CURRENT_USER, std::string(kOrder) + "\\VellumorTestParent");
    (void)inside.Add("VellumorTestChild");
    inside.Restrict(inside.Get(), KEY_READ);
    // The folder's own name is known from the list above it; what is below is not looked at.
    CHECK(RowsOf(&CheckStartMenuOrder) == RowOf("VellumorTestParent", "VellumorTestParent"));
}

TEST_CASE("a cancel ends the check of the start menu's order") {
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    order.Add("VellumorTestA");
    order.Add("VellumorTestB");
    CHECK(RowsWhenCanceledAtFirstRow(&CheckStartMenuOrder) == RowOf("VellumorTestA", "VellumorTestA"));
    DemandNothingAfterCancel(&CheckStartMenuOrder);
}

TEST_CASE("what lies behind a link in the kept order is not taken for folders of the menu") {
    CScratchKey elsewhere;
    elsewhere.Add("VellumorTestInside");
    CAreaKey order(HKEY_CURRENT_USER, kOrder);
    const CUniqueKey link = MakeLink(order.Get(), "VellumorTestLink", ObjectName(elsewhere.Get()));
    CHECK(RowsOf(&CheckStartMenuOrder) == RowOf("VellumorTestLink", "VellumorTestLink"));
    DeleteOpenKey(link.Get());
}
