#include <doctest/doctest.h>

#include "registry/registry_access.h"
#include "tests/ui/shell.h"

namespace {

constexpr char kEditorState[] = R"(Software\Microsoft\Windows\CurrentVersion\Applets\Regedit)";

/// Removes what the editor remembers, and makes its key anew when asked.
void ResetEditorState(bool present) {
    ::RegDeleteKeyA(HKEY_CURRENT_USER, kEditorState);
    if (!present) return;
    CUniqueKey key;
    REQUIRE(::RegCreateKeyA(HKEY_CURRENT_USER, kEditorState, key.Receive()) == ERROR_SUCCESS);
}

struct Remembered {
    DWORD type = 0;
    std::string bytes;
};

Remembered ReadLastKey() {
    CUniqueKey key;
    if (OpenKey(HKEY_CURRENT_USER, kEditorState, kReadAccess, key) != ERROR_SUCCESS) return {};
    char text[512] = "";
    DWORD size = sizeof text;
    Remembered remembered;
    if (::RegQueryValueExA(key.Get(), "LastKey", nullptr, &remembered.type, reinterpret_cast<BYTE*>(text),
                           &size) != ERROR_SUCCESS)
        return {};
    remembered.bytes.assign(text, size);
    return remembered;
}

constexpr char kKey[] = R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Foo)";
const std::string kStart = R"(run "C:\WINDOWS\regedit.exe" )" + std::to_string(SW_SHOWMAXIMIZED);

struct Fixture {
    Fixture() {
        ResetEditorState(true);
        shell.AddRows(1);
        shell.SendRow(kKey, "2009/03/05 07:08:09", nullptr, nullptr);
    }
    void Focus(int row) const {
        LVITEMA item{};
        item.stateMask = item.state = LVIS_FOCUSED;
        ::SendMessageA(shell.ListWindow(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                       reinterpret_cast<LPARAM>(&item));
    }
    void Mark(int row) const { ::SendMessageA(shell.ListWindow(), LVM_SETSELECTIONMARK, 0, row); }
    void DoubleClick() const {
        ::SendMessageA(shell.ListWindow(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(300, 300));
    }

    CRecordingActions actions;
    CShell shell;
};

using Asked = std::vector<std::string>;

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the command opens the editor at the selection mark's key") {
    Focus(0);
    Mark(1);
    shell.Command(32839);
    CHECK(actions.asked == Asked{"list", kStart});
    CHECK(ReadLastKey().type == REG_SZ);
    CHECK(ReadLastKey().bytes == std::string(kKey) + '\0');
}

TEST_CASE_FIXTURE(Fixture, "a double-click opens the editor at the focused row's key") {
    Mark(0);
    Focus(1);
    DoubleClick();
    CHECK(actions.asked == Asked{"list", kStart});
    CHECK(ReadLastKey().bytes == std::string(kKey) + '\0');
}

TEST_CASE_FIXTURE(Fixture,
                  "every running registry editor is ended first, in any letter case, and nothing else") {
    actions.programs = {
        {"explorer.exe", 10}, {"regedit.exe", 20}, {"regedit.exe.bak", 30}, {"RegEdit.EXE", 40}};
    for (DWORD other = 0; other < 300; ++other) actions.programs.push_back({"other.exe", 1000 + other});
    actions.programs.push_back({"regedit.exe", 50});
    Mark(0);
    shell.Command(32839);
    CHECK(actions.asked == Asked{"list", "end 20", "end 40", "end 50", kStart});
}

TEST_CASE_FIXTURE(Fixture, "without a mark or a focused row nothing happens") {
    Mark(-1);
    shell.Command(32839);
    DoubleClick();
    CHECK(actions.asked.empty());
}

TEST_CASE_FIXTURE(Fixture, "no editor is started when its remembered key cannot be written") {
    ResetEditorState(false);
    Mark(1);
    shell.Command(32839);
    CHECK(actions.asked == Asked{"list"});
}
