#include <doctest/doctest.h>

#include "repair/repair_entry.h"
#include "tests/repair/key_security.h"
#include "tests/repair/repair_bench.h"
#include "tests/repair/skipped_sleeps.h"
#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/scratch_key.h"

namespace {

/// While it lives, a key is opened for deletion only where its list grants that, as on Windows; Wine lets
/// everybody delete.
class CGuardedDeletions {
public:
    CGuardedDeletions() { s_before = m_hook.Before(); }

private:
    static LSTATUS WINAPI Open(HKEY parent, LPCSTR subkey, DWORD options, REGSAM rights, PHKEY key) {
        const auto open = reinterpret_cast<decltype(&::RegOpenKeyExA)>(reinterpret_cast<void*>(s_before));
        CUniqueKey guarded;
        if ((rights & DELETE) != 0 &&
            open(parent, subkey, options, READ_CONTROL, guarded.Receive()) == ERROR_SUCCESS &&
            !GrantsDeletion(guarded.Get()))
            return ERROR_ACCESS_DENIED;
        return open(parent, subkey, options, rights, key);
    }
    static bool GrantsDeletion(HKEY key) {
        CKeySecurity security(key);
        const PACL list = security.List();
        for (DWORD index = 0; index < list->AceCount; ++index) {
            void* entry = nullptr;
            REQUIRE(::GetAce(list, index, &entry) != FALSE);
            if ((static_cast<ACCESS_ALLOWED_ACE*>(entry)->Mask & DELETE) != 0) return true;
        }
        return false;
    }

    static inline FARPROC s_before = nullptr;
    CCallHook m_hook{"RegOpenKeyExA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Open))};
};

constexpr char kAppPaths[] = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\)";
constexpr char kClass[] = R"(Software\Classes\CLSID\{01234567-89AB-CDEF-0123-456789ABCDEF})";

/// Refuses to delete keys named "sub".
struct SubGuard {
    static inline decltype(&::RegDeleteKeyA) before = nullptr;

    static LSTATUS WINAPI Delete(HKEY parent, LPCSTR subkey) {
        return std::string("sub") == subkey ? ERROR_ACCESS_DENIED : before(parent, subkey);
    }

    CCallHook hook{"RegDeleteKeyA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Delete)),
                   reinterpret_cast<FARPROC*>(&before)};
};

}  // namespace

TEST_CASE("a whole branch of which every key refuses access is exported and goes") {
    // An application's path is of one kind alone, so there is no second try.
    CScratchKey unit(HKEY_LOCAL_MACHINE, std::string(kAppPaths) + "VellumorGone.exe");
    const HKEY inner = unit.Add("a");
    SetText(unit.Get(), "outer", "x");
    SetText(unit.Add(R"(a\b)"), "v", "x");
    unit.Restrict(inner, 0);
    unit.Restrict(unit.Get(), 0);
    const CRepairBench bench;
    CHECK(bench.Repair(unit.Path()));
    CHECK_FALSE(KeyExists(HKEY_LOCAL_MACHINE, unit.Subkey()));
    CHECK(bench.Exports() == std::vector<std::string>{unit.Path().substr(1)});
    CHECK(bench.UndoText().find("\"outer\"=\"x\"") != std::string::npos);
}

TEST_CASE("a unit of several kinds that cannot be deleted is exported and waited for once") {
    const CPlantedUnit unit("HKEY_CURRENT_USER",
                            R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\.gone)");
    const SubGuard guard;
    const CSkippedSleeps time;
    const CRepairBench bench;
    // Then its default value is emptied.
    CHECK(bench.Repair("\\" + unit.KeyText()));
    CHECK(time.Taken() >= 10'000);
    CHECK(time.Taken() < 15'000);
    CHECK(unit.Exists());
    CHECK(bench.Exports() == std::vector<std::string>{unit.KeyText(), unit.KeyText()});
}

TEST_CASE("a unit goes from a parent that grants reading alone, which is taken over and stays") {
    CScratchKey home(HKEY_LOCAL_MACHINE, std::string(kAppPaths) + "VellumorHome");
    for (const char* name : {R"(gone.exe\sub)", "beside.exe"}) home.Add(name);
    home.Restrict(home.Get(), KEY_READ);
    const CGuardedDeletions guard;
    const CRepairBench bench;
    CHECK(bench.Repair(home.Path() + R"(\gone.exe)"));
    CHECK_FALSE(KeyExists(HKEY_LOCAL_MACHINE, home.Subkey() + R"(\gone.exe)"));
    CHECK(KeyExists(HKEY_LOCAL_MACHINE, home.Subkey() + R"(\beside.exe)"));
    CHECK(CKeySecurity(home.Get()).List()->AceCount == 1);
}

TEST_CASE("a unit goes that can be read but not deleted, with subkeys that are like it") {
    CScratchKey unit(HKEY_LOCAL_MACHINE, std::string(kAppPaths) + "VellumorGone.exe");
    const HKEY inner = unit.Add("a");
    SetText(unit.Add(R"(a\b)"), "v", "x");
    unit.Restrict(inner, KEY_READ);
    unit.Restrict(unit.Get(), KEY_READ);
    const CGuardedDeletions guard;
    const CRepairBench bench;
    CHECK(bench.Repair(unit.Path()));
    CHECK_FALSE(KeyExists(HKEY_LOCAL_MACHINE, unit.Subkey()));
    CHECK(bench.Exports() == std::vector<std::string>{unit.Path().substr(1)});
    CHECK(bench.UndoText().find("\"v\"=\"x\"") != std::string::npos);
}

TEST_CASE("an emptied default value is written into a key that refused access") {
    CScratchKey key(HKEY_CURRENT_USER, "VellumorPlain");
    SetText(key.Get(), "", "gone");
    key.Restrict(key.Get(), 0);
    const CRepairBench bench;
    CHECK(bench.Repair(key.Path()));
    DWORD bytes = 99;
    CHECK(::RegQueryValueExA(key.Get(), "", nullptr, nullptr, nullptr, &bytes) == ERROR_SUCCESS);
    CHECK(bytes == 0);
    CHECK(bench.UndoText().find("@=\"gone\"") != std::string::npos);
}

TEST_CASE("a unit that refuses access below a root without a short name stays, and so does its list") {
    CScratchKey cls(HKEY_CURRENT_CONFIG, kClass);
    // Wine would delete a key without subkeys whatever its list says.
    cls.Add("sub");
    SetText(cls.Get(), "v", "x");
    cls.Restrict(cls.Get(), 0);
    const CRepairBench bench;
    CHECK_FALSE(bench.Repair(cls.Path() + R"(\"v")"));
    CHECK(::RegQueryValueExA(cls.Get(), "v", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS);
    CHECK_FALSE(Exists(bench.UndoFile()));
    CHECK(CKeySecurity(cls.Get()).List()->AceCount == 0);
}

TEST_CASE("a unit that opens goes from a root without a short name as well") {
    CScratchKey cls(HKEY_CURRENT_CONFIG, kClass);
    cls.Add("sub");
    const CRepairBench bench;
    CHECK(bench.Repair(cls.Path() + R"(\"v")"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_CONFIG, cls.Subkey()));
    CHECK(bench.Exports() == std::vector<std::string>{cls.Path().substr(1)});
}

TEST_CASE("root names are found in any letter case, but a kind's pattern is not") {
    CScratchKey software;
    SetText(software.Get(), "", "gone");
    SetText(software.Get(), "dead", "x");
    const std::string keyText = "hkey_Current_USER\\" + software.Subkey();
    const CRepairBench bench;
    CHECK(bench.Repair("\\" + keyText + R"(\"dead")"));
    CHECK_FALSE(ValueExists(HKEY_CURRENT_USER, software.Subkey(), "dead"));
    CHECK(bench.Repair("\\" + keyText));
    DWORD bytes = 99;
    CHECK(::RegQueryValueExA(software.Get(), "", nullptr, nullptr, nullptr, &bytes) == ERROR_SUCCESS);
    CHECK(bytes == 0);
    CHECK(bench.Exports() == std::vector<std::string>{keyText, keyText});
}

TEST_CASE("an undo file that somebody holds open stays as it is, and the repair goes ahead") {
    CScratchKey software;
    const CScratchFolder folder;
    const std::string undoFile = folder.AddFile("undo.reg");
    CUndoRecord undo(undoFile);
    const auto checkRepair = [&] {
        SetText(software.Add("dead"), "v", "x");
        CHECK(static_cast<bool>(RepairEntry(software.Path() + R"(\dead)", undo)));
        CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\dead)"));
    };
    {
        const CUniqueFile held(
            ::CreateFileA(undoFile.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        REQUIRE(static_cast<bool>(held));
        checkRepair();
    }
    CHECK(FileText(undoFile).empty());
    // Once it is let go, the next export gets in.
    checkRepair();
    CHECK(FileText(undoFile).find("\"v\"=\"x\"") != std::string::npos);
}
