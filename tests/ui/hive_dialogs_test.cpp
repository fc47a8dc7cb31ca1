#include <windows.h>

#include <commctrl.h>
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "tests/ui/hive_shell.h"

namespace {

INT_PTR CALLBACK IgnoreAll(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

/// A dialog made from its template alone.
class CTemplate {
public:
    explicit CTemplate(int id)
        : m_dialog(::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), nullptr,
                                        &IgnoreAll, 0)) {
        REQUIRE(m_dialog != nullptr);
    }
    CTemplate(const CTemplate&) = delete;
    CTemplate& operator=(const CTemplate&) = delete;
    ~CTemplate() { ::DestroyWindow(m_dialog); }

    [[nodiscard]] HWND Get() const { return m_dialog; }
    [[nodiscard]] DWORD Style() const { return static_cast<DWORD>(::GetWindowLongA(m_dialog, GWL_STYLE)); }
    /// "class text" of each control, in order.
    [[nodiscard]] std::vector<std::string> Controls() const {
        std::vector<std::string> controls;
        for (HWND child = ::GetWindow(m_dialog, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            char kind[64] = "";
            ::GetClassNameA(child, kind, sizeof kind);
            controls.push_back(std::to_string(static_cast<short>(::GetDlgCtrlID(child))) + " " + kind + " " +
                               WindowText(child));
        }
        return controls;
    }
    /// Checks that no control reaches over the dialog's edge or another control.
    void CheckLayout() const {
        RECT client;
        ::GetClientRect(m_dialog, &client);
        std::vector<RECT> before;
        for (HWND child = ::GetWindow(m_dialog, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            RECT place;
            ::GetWindowRect(child, &place);
            ::MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&place), 2);
            RECT common;
            CHECK(::UnionRect(&common, &client, &place) != FALSE);
            CHECK(::EqualRect(&common, &client) != FALSE);
            for (const RECT& other : before) CHECK(::IntersectRect(&common, &place, &other) == FALSE);
            before.push_back(place);
        }
    }

private:
    HWND m_dialog;
};

using Texts = std::vector<std::string>;

/// Whether a list shows columns of this width in all without being scrolled, also beside a scroll bar.
bool HasRoomFor(HWND list, int width) {
    RECT client;
    ::GetClientRect(list, &client);
    return client.right - ::GetSystemMetrics(SM_CXVSCROLL) >= width;
}

}  // namespace

TEST_CASE("the progress dialogs have no title, no closing box and no button") {
    const CTemplate backup(167);
    CHECK(backup.Controls() == Texts{"-1 Static Please wait the backup process to complete...",
                                     "1041 msctls_progress32 ", "1033 msctls_progress32 "});
    const CTemplate compact(164);
    CHECK(compact.Controls() ==
          Texts{"-1 Static Compacting the registry. Please wait...", "1032 msctls_progress32 "});
    for (const CTemplate* dialog : {&backup, &compact}) {
        CHECK(WindowText(dialog->Get()).empty());
        CHECK((dialog->Style() & WS_SYSMENU) == 0);
        CHECK((dialog->Style() & WS_CAPTION) == WS_CAPTION);
        dialog->CheckLayout();
    }
}

TEST_CASE("the summary of a compaction shows all its columns above OK") {
    const CTemplate summary(165);
    CHECK(WindowText(summary.Get()) == "Compact Summary");
    CHECK(summary.Controls() == Texts{"1034 SysListView32 ", "1 Button OK"});
    CHECK((summary.Style() & WS_SYSMENU) != 0);
    CHECK(HasRoomFor(::GetDlgItem(summary.Get(), 1034), 350 + 90 + 90 + 60));
    summary.CheckLayout();
}

TEST_CASE("the restore dialog shows all its columns above its three buttons") {
    const CTemplate restore(166);
    CHECK(WindowText(restore.Get()) == "Restore backup");
    CHECK(restore.Controls() ==
          Texts{"1027 SysListView32 ", "1 Button Restore", "1029 Button Delete", "2 Button Cancel"});
    CHECK(HasRoomFor(::GetDlgItem(restore.Get(), 1027), 180 + 215));
    CHECK(LOWORD(::SendMessageA(restore.Get(), DM_GETDEFID, 0, 0)) == IDOK);
    restore.CheckLayout();
}
