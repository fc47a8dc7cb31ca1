#include <doctest/doctest.h>

#include "tests/driver/process_info.h"
#include "tests/driver/screen.h"
#include "tests/driver/window_access.h"
#include "tests/e2e/app_with_rows.h"
#include "tests/e2e/registry_editor.h"

namespace {

/// Two editors that somebody else started, and a program with rows.
struct Fixture {
    Fixture() {
        state.Forget();
        editors.Start();
        editors.Start();
    }

    /// Waits until both are gone and another one runs.
    void CheckOneNewEditor() {
        WaitFor("both editors to end", [this] { return editors.RunningOfStarted() == 0; });
        WaitFor("a new editor", [] { return ProcessesNamed(kEditor).size() == 1; });
    }
    void CheckNothingHappens() {
        CHECK(StaysFalse([this] { return editors.RunningOfStarted() != 2; }, 300));
        CHECK(ProcessesNamed(kEditor).size() == 2);
        CHECK(state.LastKey().bytes.empty());
    }
    void CheckRemembered(int row) {
        const Remembered remembered = state.LastKey();
        CHECK(remembered.type == REG_SZ);
        CHECK(remembered.bytes == app.List().Cell(row, 0) + '\0');
    }

    CAppDriver& app = AppWithRows();
    CEditorState state;
    CEditors editors;
};

void ClickRow(const CAppDriver& app, int row, std::initializer_list<UINT> messages) {
    const RECT cell = app.List().CellRect(row, 1);
    const LPARAM position = MAKELPARAM(cell.left + 10, (cell.top + cell.bottom) / 2);
    for (const UINT message : messages)
        ::PostMessageA(app.List().Window(), message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, position);
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the command ends all registry editors and opens one at the marked row's key") {
    app.List().Select({1});
    app.List().Focus(2);
    app.List().SetSelectionMark(4);
    app.Post(commands::kOpenRegistryEditor);
    CheckOneNewEditor();
    CheckRemembered(4);
}

TEST_CASE_FIXTURE(Fixture, "the editor that is opened fills the screen") {
    app.List().SetSelectionMark(0);
    app.Post(commands::kOpenRegistryEditor);
    CheckOneNewEditor();
    const DWORD editor = ProcessesNamed(kEditor).front();
    const auto isMaximized = [editor] {
        for (const HWND window : TopWindowsOf(editor))
            if (::IsZoomed(window) != FALSE) return true;
        return false;
    };
    WaitFor("the maximized editor", isMaximized);
    TakePicture("registry-editor");
}

TEST_CASE_FIXTURE(Fixture, "a double click opens the editor at the row under it") {
    app.List().SetSelectionMark(1);
    ClickRow(app, 3, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    CheckOneNewEditor();
    CHECK(app.List().FocusedRow() == 3);
    CheckRemembered(3);
}

TEST_CASE_FIXTURE(Fixture, "a double click takes the focused row, not the marked or the selected one") {
    app.List().Select({1});
    app.List().Focus(5);
    app.List().SetSelectionMark(2);
    ClickRow(app, 0, {WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    CheckOneNewEditor();
    CheckRemembered(5);
}

TEST_CASE_FIXTURE(Fixture, "the command without a marked row does nothing") {
    app.List().Select({1});
    app.List().Focus(1);
    app.List().SetSelectionMark(-1);
    app.Post(commands::kOpenRegistryEditor);
    app.Settle();
    CheckNothingHappens();
}

TEST_CASE_FIXTURE(Fixture, "a double click without a focused row does nothing") {
    app.List().SetSelectionMark(1);
    app.List().Focus(-1);
    ClickRow(app, 1, {WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    app.Settle();
    CheckNothingHappens();
}

TEST_CASE_FIXTURE(Fixture, "no editor is started when there is nowhere to remember the key") {
    state.Remove();
    app.List().SetSelectionMark(1);
    app.Post(commands::kOpenRegistryEditor);
    app.Settle();
    WaitFor("both editors to end", [this] { return editors.RunningOfStarted() == 0; });
    CHECK(StaysFalse([] { return !ProcessesNamed(kEditor).empty(); }, 500));
    CHECK(state.LastKey().bytes.empty());
    CHECK_FALSE(app.ShownMessageBox());
}
