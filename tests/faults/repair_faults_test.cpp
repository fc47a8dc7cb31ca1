#include <doctest/doctest.h>

#include "repair/repair_entry.h"
#include "repair/undo_companion.h"
#include "repair/undo_name_rules.h"
#include "tests/faults/fault_runs.h"
#include "tests/repair/key_security.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"

namespace {

#define GUID "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}"

using Deed = Repair::Deed;

constexpr char kAppPath[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\VellumorGone.exe)";
constexpr char kProduct[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\VellumorGone)";

/// A value that was planted, and how an export writes it.
struct Planted {
    std::string rootName;
    std::string path;
    std::string name;
    std::string text = "text";

    [[nodiscard]] std::string Line() const {
        return (name.empty() ? "@" : "\"" + name + "\"") + "=\"" + text + "\"";
    }
    [[nodiscard]] bool IsThere() const {
        CUniqueKey key;
        if (::RegOpenKeyExA(RootNamed(rootName), path.c_str(), 0, KEY_QUERY_VALUE, key.Receive()) !=
            ERROR_SUCCESS)
            return KeyExists(RootNamed(rootName), path);  // it refuses to be read
        char data[64] = "";
        DWORD bytes = sizeof data;
        return ::RegQueryValueExA(key.Get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data),
                                  &bytes) == ERROR_SUCCESS &&
               data == text;
    }
    /// Whether an undo file's last word about the value is what it was.
    [[nodiscard]] bool ComesBackBy(const std::string& undoText) const {
        const std::string keyLine = "[" + rootName + "\\" + path + "]\r\n";
        const std::string assignment = "\n" + Line().substr(0, Line().find('=') + 1);
        bool comesBack = false;
        for (std::size_t block = undoText.find(keyLine); block != std::string::npos;
             block = undoText.find(keyLine, block + 1)) {
            const std::string lines = undoText.substr(block, undoText.find("\r\n\r\n", block) + 2 - block);
            if (lines.find(assignment) != std::string::npos)
                comesBack = lines.find("\n" + Line() + "\r\n") != std::string::npos;
        }
        return comesBack;
    }
};

/// One command that cleans, with the undo file of its own.
struct Cleaning {
    CScratchFolder folder;
    std::string undoFile = folder.Path() + "\\undo.reg";
    Repair last;

    void Clean(CFaultRun& run, std::initializer_list<std::string> entries) {
        run.During([&] {
            CUndoRecord undo(undoFile);
            for (const std::string& entry : entries) last = RepairEntry(entry, undo);
        });
        DemandReading(run);
    }
    /// Demands that no undo file was left that would be replayed unread.
    void DemandReading(CFaultRun& run) const {
        run.Demand(!Exists(undoFile) || Exists(CompanionName(undoFile)), "it can be replayed unread");
        run.Demand(run.HasFault() || !Exists(undoFile) || MayReplay(undoFile), "it cannot be replayed");
    }
    /// Demands that what is gone is in the undo file, wherever the file could be written and the branch read:
    /// a failed export holds no repair up.
    void DemandCopies(CFaultRun& run, std::initializer_list<Planted> planted) const {
        if (run.IsFaultOf({"RegOpenKeyExA", "RegEnumValueA", "RegEnumKeyA", "CreateFileA", "WriteFile",
                           "SetFilePointerEx"}))
            return;
        const std::string text = FileText(undoFile);
        for (const Planted& value : planted)
            run.Demand(value.IsThere() || value.ComesBackBy(text), "gone without a copy: " + value.Line());
    }
    void DemandDeed(CFaultRun& run, Deed deed, bool isDone) const {
        run.Demand(run.HasFault() || last.deed == deed, "the repair was not made");
        run.Demand(last.deed != deed || isDone, "a repair was told that was not made");
    }
};

void CleanUnit(CFaultRun& run, const char* root, const char* path) {
    const CPlantedUnit unit(root, path);
    Cleaning cleaning;
    cleaning.Clean(run, {"\\" + unit.KeyText()});
    cleaning.DemandDeed(run, Deed::KeyRemoved, !unit.Exists());
    run.Demand(unit.SurroundingsAreWhole(), "more is gone than the unit");
    cleaning.DemandCopies(
        run,
        {{root, path, "", "default"}, {root, path, "named"}, {root, std::string(path) + R"(\sub)", "deep"}});
}

void DemandPrivilegesGivenBack(CFaultRun& run) {
    if (run.IsFaultOf({"AdjustTokenPrivileges", "LookupPrivilegeValueA", "OpenProcessToken"})) return;
    run.Demand(!IsEnabled("SeTakeOwnershipPrivilege"), "the privilege to take ownership is still in force");
}

}  // namespace

TEST_CASE("a value's repair tells the truth and leaves a copy, whichever call fails") {
    RunWithFaults("value", [](CFaultRun& run) {
        const CScratchKey key(HKEY_CURRENT_USER, "VellumorPlain");
        SetText(key.Get(), "dead", "text");
        SetText(key.Get(), "kept", "text");
        Cleaning cleaning;
        cleaning.Clean(run, {key.Path() + R"(\"dead")"});
        const Planted dead{"HKEY_CURRENT_USER", "VellumorPlain", "dead"};
        cleaning.DemandDeed(run, Deed::ValueDeleted, !dead.IsThere());
        cleaning.DemandCopies(run, {dead});
        run.Demand(ValueExists(HKEY_CURRENT_USER, "VellumorPlain", "kept"), "another value is gone");
    });
}

TEST_CASE("an emptied default value comes back as it was, whichever call fails") {
    RunWithFaults("default value", [](CFaultRun& run) {
        CScratchKey parent(HKEY_CURRENT_USER, R"(Software\VellumorGone)");
        SetText(parent.Add("deep"), "", "former");
        SetText(parent.Add(R"(deep\sub)"), "named", "text");
        Cleaning cleaning;
        // The second one's export holds the default value that the first one has emptied.
        cleaning.Clean(run, {parent.Path() + R"(\deep\sub\x)", parent.Path() + R"(\deep)", parent.Path()});
        const std::string deep = parent.Subkey() + R"(\deep)";
        cleaning.DemandDeed(run, Deed::KeyRemoved, !KeyExists(HKEY_CURRENT_USER, parent.Subkey()));
        cleaning.DemandCopies(run, {{"HKEY_CURRENT_USER", deep, "", "former"},
                                    {"HKEY_CURRENT_USER", deep + R"(\sub)", "named"}});
    });
    RunWithFaults("default value twice", [](CFaultRun& run) {
        CScratchKey parent(HKEY_CURRENT_USER, "VellumorPlain");
        SetText(parent.Add("deep"), "", "former");
        SetText(parent.Add("deep"), "dead", "text");
        Cleaning cleaning;
        cleaning.Clean(run, {parent.Path() + R"(\deep)", parent.Path() + R"(\deep\"dead")"});
        const std::string deep = parent.Subkey() + R"(\deep)";
        cleaning.DemandDeed(run, Deed::ValueDeleted, !ValueExists(HKEY_CURRENT_USER, deep, "dead"));
        cleaning.DemandCopies(
            run, {{"HKEY_CURRENT_USER", deep, "", "former"}, {"HKEY_CURRENT_USER", deep, "dead"}});
    });
}

TEST_CASE("a unit's removal tells the truth and leaves a copy, whichever call fails") {
    RunWithFaults("unit of the user",
                  [](CFaultRun& run) { CleanUnit(run, "HKEY_CURRENT_USER", R"(Software\VellumorGone)"); });
    RunWithFaults("unit of the machine",
                  [](CFaultRun& run) { CleanUnit(run, "HKEY_LOCAL_MACHINE", kAppPath); });
    RunWithFaults("class", [](CFaultRun& run) { CleanUnit(run, "HKEY_CLASSES_ROOT", R"(CLSID\)" GUID); });
    RunWithFaults("single key", [](CFaultRun& run) {
        const CScratchKey product(HKEY_LOCAL_MACHINE, kProduct);
        SetText(product.Get(), "named", "text");
        Cleaning cleaning;
        cleaning.Clean(run, {product.Path()});
        cleaning.DemandDeed(run, Deed::KeyRemoved, !KeyExists(HKEY_LOCAL_MACHINE, kProduct));
        cleaning.DemandCopies(run, {{"HKEY_LOCAL_MACHINE", kProduct, "named"}});
    });
}

TEST_CASE("a unit that refuses access is taken over and goes with a copy, whichever call fails") {
    RunWithFaults("refused unit", [](CFaultRun& run) {
        CScratchKey unit(HKEY_LOCAL_MACHINE, kAppPath);
        SetText(unit.Get(), "named", "text");
        const HKEY below = unit.Add("sub");
        SetText(below, "deep", "text");
        unit.Restrict(below, 0);
        unit.Restrict(unit.Get(), 0);
        Cleaning cleaning;
        cleaning.Clean(run, {unit.Path()});
        cleaning.DemandDeed(run, Deed::KeyRemoved, !KeyExists(HKEY_LOCAL_MACHINE, kAppPath));
        // What refuses reading all the same is in no export.
        if (!run.HasFault()) cleaning.DemandCopies(run, {{"HKEY_LOCAL_MACHINE", kAppPath, "named"}});
        DemandPrivilegesGivenBack(run);
    });
}

TEST_CASE("what a link leads to stays, whichever call fails") {
    RunWithFaults("links", [](CFaultRun& run) {
        CScratchKey software(HKEY_CURRENT_USER, R"(Software\VellumorLinks)");
        SetText(software.Add("target"), "kept", "text");
        SetText(software.Add(R"(target\sub)"), "kept", "text");
        SetText(software.Add(R"(target2)"), "kept", "text");
        software.Add("unit");
        software.AddLink(R"(unit\link)", ObjectName(software.Add("target")));
        software.AddLink(R"(unit\link2)", ObjectName(software.Add("target2")));
        Cleaning cleaning;
        cleaning.Clean(run, {software.Path() + R"(\unit)"});
        cleaning.DemandDeed(run, Deed::KeyRemoved,
                            !KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\unit)"));
        for (const char* target : {R"(\target)", R"(\target\sub)", R"(\target2)"})
            run.Demand(ValueExists(HKEY_CURRENT_USER, software.Subkey() + target, "kept"),
                       std::string("a link's target is gone: ") + target);
    });
}

TEST_CASE("a subkey that no narrow name leads to keeps its unit, whichever call fails") {
    RunWithFaults("look-alikes", [](CFaultRun& run) {
        CScratchKey software(HKEY_CURRENT_USER, R"(Software\VellumorAlike)");
        SetText(software.Add(R"(unit\a)"), "kept", "text");
        software.Add(R"(unit\b)");
        // A full-width letter, which the narrow calls take for the plain one.
        const CUniqueKey alike = CreateKeyByCountedName(software.Add("unit"), L"\xFF41");
        REQUIRE(alike);
        Cleaning cleaning;
        cleaning.Clean(run, {software.Path() + R"(\unit)"});
        // The narrow calls cannot name it, so it stays, and with it the unit.
        run.Demand(cleaning.last.deed != Deed::KeyRemoved, "a repair was told that was not made");
        run.Demand(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\unit)"), "the look-alike is gone");
        DeleteOpenKey(alike.Get());
    });
}

TEST_CASE("a plan ends and changes nothing, whichever call fails") {
    RunWithFaults("plan", [](CFaultRun& run) {
        const CPlantedUnit unit("HKEY_CURRENT_USER", R"(Software\VellumorGone)");
        const CScratchKey product(HKEY_LOCAL_MACHINE, kProduct);
        run.During([&] {
            (void)PlanRepair("\\" + unit.KeyText());
            (void)PlanRepair("\\" + unit.KeyText() + R"(\"named")");
            (void)PlanRepair(product.Path());
        });
        run.Demand(unit.Exists() && unit.SurroundingsAreWhole(), "a plan has changed something");
    });
}
