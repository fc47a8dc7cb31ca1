#include <doctest/doctest.h>

#include <algorithm>

#include "platform/folder_tree.h"
#include "tests/driver/dialog_driver.h"
#include "tests/driver/screen.h"
#include "tests/e2e/program.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/shown_rows.h"
#include "tests/support/registry_tree.h"

namespace {

constexpr DWORD kReplayPatience = 20'000;  // milliseconds

bool IsOurs(const ListRow& row) {
    const auto marked = [](const std::string& text) { return text.find(kMark) != std::string::npos; };
    return marked(row.key) || marked(row.valueName) || marked(row.dataReference);
}

/// An empty default value where there was none: the repair of a key without one makes it, and text to be
/// written back cannot take a value away.
void DropEmptyDefaults(Tree& tree) {
    const auto found = tree.values.find("");
    if (found != tree.values.end() && found->second == TreeValue{REG_SZ, ""}) tree.values.erase(found);
    for (auto& [name, subkey] : tree.subkeys) DropEmptyDefaults(subkey);
}

Tree ReadMachineTree(const char* name) {
    CUniqueKey key;
    REQUIRE(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, name, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS);
    return ReadTree(key.Get());
}

/// What holds the plants, without what the registry editor and the platform keep of their own windows.
Tree ReadRegistry() {
    Tree tree;
    for (const char* name : {"Software", R"(System\CurrentControlSet\Services)"})
        tree.subkeys[name] = ReadMachineTree(name);
    tree.subkeys["user"] = ReadTree(HKEY_CURRENT_USER);
    DropEmptyDefaults(tree);
    tree.subkeys["user"].subkeys["Software"].subkeys.erase("Wine");
    Tree* key = &tree.subkeys["user"];
    for (const char* name : {"Software", "Microsoft", "Windows", "CurrentVersion", "Applets"})
        key = &key->subkeys[name];
    key->subkeys.erase("Regedit");
    return tree;
}

std::size_t CheckOurRows(const CAppDriver& app) {
    const std::vector<ListRow> rows = app.List().Rows();
    std::size_t count = 0;
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (IsOurs(rows[row])) {
            app.List().Check(static_cast<int>(row), true);
            ++count;
        }
    return count;
}

/// Whether what a row names is still there: its value, or the text of its key's default value.
bool IsStillThere(const ListRow& row) {
    const KeyPlace place = PlaceOf(row.key);
    CUniqueKey key;
    if (::RegOpenKeyExA(place.root, place.subkey.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS)
        return false;
    DWORD bytes = 0;
    return ::RegQueryValueExA(key.Get(), row.valueName.c_str(), nullptr, nullptr, nullptr, &bytes) ==
               ERROR_SUCCESS &&
           (!row.valueName.empty() || bytes > 1);
}

void Clean(const CAppDriver& app, std::size_t count) {
    app.Post(commands::kClean);
    const CMessageBox question = app.WaitForMessageBox();
    TakePicture("clean-question");
    CHECK(question.Caption() == "Cleaning");
    CHECK(question.Text() == "Clean the selected " + std::to_string(count) + " invalid registry entries? ");
    CHECK(question.Buttons() == std::vector<std::string>{"OK", "Cancel"});
    question.Dismiss("OK");
    CHECK(AnswerBox(app, (std::to_string(count) + " selected").c_str(), "OK", kReplayPatience) ==
          std::to_string(count) + " selected invalid registry entries cleaned successfully.");
}

void UndoOnlyFile(const CAppDriver& app) {
    app.Post(commands::kUndo);
    const HWND dialog = WaitForDialog(app, "Undo repair");
    const CRemoteList files(app.Process(), ::GetDlgItem(dialog, 1027));
    REQUIRE(files.Count() == 1);
    files.Check(0, true);
    TakePicture("undo-dialog");
    const std::string date = files.Cell(0, 1);
    PressButton(dialog, IDOK);
    CHECK(AnswerBox(app, "Undo the", "Yes") == "Undo the selected registry repair on " + date + "?");
    CHECK(AnswerBox(app, "Repair made", "OK") == "Repair made on " + date + " recovered successfully.");
}

}  // namespace

TEST_CASE("cleaning a row of every rule and undoing it leaves the registry as it was") {
    DeleteFolderContents(TestFolder() + "\\Undo");
    const CRulePlants plants;
    const Tree before = ReadRegistry();
    const FreshApp app;
    RunAnalysis(app);
    const std::vector<ListRow> rows = app.List().Rows();
    const std::size_t count = CheckOurRows(app);
    REQUIRE(count > 100);
    Clean(app, count);

    CHECK(app.List().Count() == static_cast<int>(rows.size() - count));
    for (const ListRow& row : app.List().Rows()) CHECK_FALSE(IsOurs(row));
    for (const ListRow& row : rows) {
        CAPTURE(row.key);
        CAPTURE(row.valueName);
        if (IsOurs(row)) CHECK_FALSE(IsStillThere(row));
    }
    REQUIRE(Difference(before, ReadRegistry()) != "");

    UndoOnlyFile(app);
    // The editor runs on by itself.
    std::string difference;
    const DWORD start = ::GetTickCount();
    do {
        ::Sleep(500);
        difference = Difference(before, ReadRegistry());
    } while (!difference.empty() && ::GetTickCount() - start < kReplayPatience);
    CHECK(difference == "");
    DeleteFolderContents(TestFolder() + "\\Undo");
}
