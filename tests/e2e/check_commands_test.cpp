#include <doctest/doctest.h>

#include <numeric>

#include "tests/driver/screen.h"
#include "tests/e2e/app_with_rows.h"

namespace {

using Rows = std::vector<int>;

Rows AllRows(const CAppDriver& app) {
    Rows rows(static_cast<std::size_t>(app.List().Count()));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

}  // namespace

TEST_CASE("Check ticks the selected rows, and ticked ones stay ticked") {
    const CAppDriver& app = AppWithRows();
    app.List().Check(0, true);
    app.List().Select({1, 3});
    app.Post(commands::kCheck);
    app.Settle();
    TakePicture("checked");
    CHECK(app.List().CheckedRows() == Rows{0, 1, 3});
    CHECK(app.List().SelectedRows() == Rows{1, 3});
}

TEST_CASE("Check without a selection does nothing") {
    const CAppDriver& app = AppWithRows();
    app.List().Check(2, true);
    app.Post(commands::kCheck);
    app.Settle();
    CHECK(app.List().CheckedRows() == Rows{2});
}

TEST_CASE("CheckAll ticks every row, whatever is selected") {
    const CAppDriver& app = AppWithRows();
    app.List().Select({4});
    app.Post(commands::kCheckAll);
    app.Settle();
    CHECK(app.List().CheckedRows() == AllRows(app));
    CHECK(app.List().SelectedRows() == Rows{4});
}

TEST_CASE("Uncheck clears every tick though only one row is selected") {
    const CAppDriver& app = AppWithRows();
    for (const int row : {0, 2, 5}) app.List().Check(row, true);
    app.List().Select({2});
    app.Post(commands::kUncheck);
    app.Settle();
    CHECK(app.List().CheckedRows().empty());
}

TEST_CASE("the Delete key removes nothing while no row is checked") {
    const CAppDriver& app = AppWithRows();
    const std::vector<ListRow> rows = app.List().Rows();
    app.List().Select({1});
    ::PostMessageA(app.List().Window(), WM_KEYDOWN, VK_DELETE, 0);
    ::PostMessageA(app.List().Window(), WM_KEYUP, VK_DELETE, 0);
    app.Settle();
    const CMessageBox box = app.WaitForMessageBox();
    CHECK(box.Text() == "Please check more than one line in the invalid registry entries list to clean.");
    box.Dismiss();
    CHECK(app.List().Rows() == rows);
}

TEST_CASE("the space key ticks the focused row") {
    const CAppDriver& app = AppWithRows();
    app.List().Focus(3);
    ::PostMessageA(app.List().Window(), WM_KEYDOWN, VK_SPACE, 0);
    app.Settle();
    CHECK(app.List().CheckedRows() == Rows{3});
}

TEST_CASE("the arrow keys reach the list") {
    const CAppDriver& app = AppWithRows();
    app.List().Focus(2);
    ::PostMessageA(app.List().Window(), WM_KEYDOWN, VK_DOWN, 0);
    app.Settle();
    CHECK(app.List().FocusedRow() == 3);
}
