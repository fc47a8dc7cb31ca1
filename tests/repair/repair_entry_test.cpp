#include "repair/repair_entry.h"

#include <doctest/doctest.h>

#include "tests/repair/repair_bench.h"
#include "tests/support/allocation_count.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr char kHeader[] = "Windows Registry Editor Version 5.00\r\n\r\n";

/// A key below a root in which no kind of entry is at home, so that only the default repairs fit.
struct PlainKey : CScratchKey {
    PlainKey() : CScratchKey(HKEY_CURRENT_USER, "VellumorPlain") {}
    [[nodiscard]] std::string KeyText() const { return Path().substr(1); }
};

}  // namespace

TEST_CASE("a value entry of no kind loses its value and nothing else") {
    PlainKey key;
    SetText(key.Get(), "dead", "x");
    SetText(key.Get(), "alive", "y");
    SetText(key.Add("sub"), "z", "z");
    const CRepairBench bench;
    CHECK(bench.Repair(key.Path() + R"(\"dead")"));
    CHECK_FALSE(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "dead"));
    CHECK(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "alive"));
    CHECK(ValueExists(HKEY_CURRENT_USER, key.Subkey() + R"(\sub)", "z"));
    // The whole branch is exported, as it was before.
    CHECK(bench.UndoText() ==
          kHeader + ("[" + key.KeyText() + "]\r\n\"alive\"=\"y\"\r\n\"dead\"=\"x\"\r\n\r\n[" + key.KeyText() +
                     "\\sub]\r\n\"z\"=\"z\"\r\n\r\n"));
}

TEST_CASE("a key entry of no kind keeps its key, and its default value becomes an empty text") {
    PlainKey key;
    SetText(key.Get(), "", R"(C:\gone.exe)");
    SetText(key.Get(), "alive", "y");
    key.Add("sub");
    const CRepairBench bench;
    CHECK(bench.Repair(key.Path()));
    DWORD type = 99;
    DWORD bytes = 99;
    CHECK(::RegQueryValueExA(key.Get(), "", nullptr, &type, nullptr, &bytes) == ERROR_SUCCESS);
    CHECK(type == REG_SZ);
    CHECK(bytes == 0);
    CHECK(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "alive"));
    CHECK(KeyExists(HKEY_CURRENT_USER, key.Subkey() + R"(\sub)"));
    CHECK(bench.Exports() == std::vector<std::string>{key.KeyText()});
    CHECK(bench.UndoText().find(R"(@="C:\\gone.exe")") != std::string::npos);
}

TEST_CASE("a key entry under HKEY_CLASSES_ROOT that is in none of the three lists keeps its key") {
    SetValue(HKEY_CLASSES_ROOT, ".vellumortest", "", "gone");
    const CRepairBench bench;
    CHECK(bench.Repair(R"(\HKEY_CLASSES_ROOT\.vellumortest)"));
    CHECK(KeyExists(HKEY_CLASSES_ROOT, ".vellumortest"));
    CHECK(ValueExists(HKEY_CLASSES_ROOT, ".vellumortest", ""));
    ::RegDeleteKeyA(HKEY_CLASSES_ROOT, ".vellumortest");
}

TEST_CASE("several entries share one undo file, in the order of their repairs") {
    PlainKey key;
    for (const char* name : {"a", "b", "c"}) SetText(key.Add(name), "dead", "x");
    const CRepairBench bench;
    for (const char* name : {"c", "a", "b"}) CHECK(bench.Repair(key.Path() + "\\" + name + R"(\"dead")"));
    CHECK(bench.Exports() == std::vector<std::string>{key.KeyText() + R"(\c)", key.KeyText() + R"(\a)",
                                                      key.KeyText() + R"(\b)"});
}

TEST_CASE("what is no entry changes nothing and writes no undo file") {
    PlainKey key;
    SetText(key.Get(), "dead", "x");
    const CRepairBench bench;
    const std::string withoutBackslash = key.Path().substr(1);
    CHECK_FALSE(bench.Repair(withoutBackslash));
    CHECK_FALSE(bench.Repair(withoutBackslash + R"(\"dead")"));
    CHECK_FALSE(bench.Repair(R"(\HKEY_CURRENT_USER)"));
    CHECK_FALSE(bench.Repair(R"(\HKCU\VellumorPlain\"dead")"));
    CHECK_FALSE(bench.Repair(""));
    CHECK(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "dead"));
    CHECK_FALSE(Exists(bench.UndoFile()));
}

TEST_CASE("an entry whose key or value is gone is not repaired") {
    PlainKey key;
    const CRepairBench bench;
    CHECK_FALSE(bench.Repair(key.Path() + R"(\absent)"));
    CHECK_FALSE(bench.Repair(key.Path() + R"(\absent\"x")"));
    CHECK_FALSE(Exists(bench.UndoFile()));
    CHECK_FALSE(bench.Repair(key.Path() + R"(\"absent")"));
    CHECK_FALSE(bench.Repair(R"(\HKEY_CURRENT_USER\Software\VellumorAbsent)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, R"(Software\VellumorAbsent)"));
}

TEST_CASE("a value of a root itself is deleted") {
    SetText(HKEY_CURRENT_USER, "VellumorRootValue", "x");
    const CRepairBench bench;
    CHECK(bench.Repair(R"(\HKEY_CURRENT_USER\"VellumorRootValue")"));
    CHECK(::RegQueryValueExA(HKEY_CURRENT_USER, "VellumorRootValue", nullptr, nullptr, nullptr, nullptr) ==
          ERROR_FILE_NOT_FOUND);
    CHECK(bench.UndoText().starts_with(kHeader + std::string("[HKEY_CURRENT_USER]\r\n")));
    CHECK(bench.UndoText().find("\"VellumorRootValue\"=\"x\"") != std::string::npos);
}

TEST_CASE("how many values stand beside one that is deleted takes no memory") {
    const auto allocationsAmong = [](int values) {
        PlainKey key;
        SetText(key.Get(), "dead", "x");
        for (int value = 0; value < values; ++value)
            SetText(key.Get(), std::string(50, 'n') + std::to_string(value), "y");
        const CRepairBench bench;
        const long before = AllocationCount();
        CHECK(bench.Repair(key.Path() + R"(\"dead")"));
        return AllocationCount() - before;
    };
    CHECK(allocationsAmong(500) < allocationsAmong(5) + 10);
}

TEST_CASE("a value name with a double quote is cut there") {
    PlainKey key;
    SetText(key.Get(), "a\"b", "x");
    const CRepairBench bench;
    CHECK_FALSE(bench.Repair(key.Path() + R"(\"a"b")"));
    CHECK(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "a\"b"));
}

TEST_CASE("a repair goes ahead without an undo file that cannot be written") {
    PlainKey key;
    SetText(key.Get(), "dead", "x");
    MakeKey(HKEY_CURRENT_USER, R"(Software\VellumorDead\sub)");
    for (const char* undoFile : {R"(C:\no such folder\undo.reg)", R"(Z:\dev\full)", ""}) {
        SetText(key.Get(), "dead", "x");
        MakeKey(HKEY_CURRENT_USER, R"(Software\VellumorDead\sub)");
        CUndoRecord undo(undoFile);
        CHECK(static_cast<bool>(RepairEntry(key.Path() + R"(\"dead")", undo)));
        CHECK_FALSE(ValueExists(HKEY_CURRENT_USER, key.Subkey(), "dead"));
        CHECK(static_cast<bool>(RepairEntry(R"(\HKEY_CURRENT_USER\Software\VellumorDead)", undo)));
        CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, R"(Software\VellumorDead)"));
    }
}

TEST_CASE("a key that refuses writing is taken over for its value") {
    PlainKey key;
    const HKEY locked = key.Add("locked");
    SetText(locked, "dead", "x");
    key.Restrict(locked, KEY_READ);
    const CRepairBench bench;
    CHECK(bench.Repair(key.Path() + R"(\locked\"dead")"));
    CHECK_FALSE(ValueExists(HKEY_CURRENT_USER, key.Subkey() + R"(\locked)", "dead"));
    CHECK(bench.UndoText().find("\"dead\"=\"x\"") != std::string::npos);
}

TEST_CASE("a unit that refuses all access is taken over, exported and deleted") {
    CScratchKey software;
    const HKEY locked = software.Add("locked");
    SetText(locked, "v", "x");
    software.Restrict(locked, 0);
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\locked)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\locked)"));
    CHECK(bench.UndoText().find("\"v\"=\"x\"") != std::string::npos);
}

TEST_CASE("a unit whose parent refuses all access is deleted") {
    CScratchKey software;
    const HKEY parent = software.Add("parent");
    software.Add("parent\\dead");
    software.Restrict(parent, 0);
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\parent\dead)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\parent\dead)"));
    CHECK(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\parent)"));
}

TEST_CASE("a key below a root without a short name is left as it is") {
    CScratchKey scratch(HKEY_CURRENT_CONFIG);
    const HKEY locked = scratch.Add("locked");
    SetText(locked, "dead", "x");
    scratch.Restrict(locked, KEY_READ);
    const CRepairBench bench;
    CHECK_FALSE(bench.Repair(scratch.Path() + R"(\locked\"dead")"));
    CHECK(ValueExists(HKEY_CURRENT_CONFIG, scratch.Subkey() + R"(\locked)", "dead"));
}

TEST_CASE("of a unit that is a link the link goes and its target stays") {
    CScratchKey software;
    SetText(software.Add("target\\sub"), "v", "x");
    software.AddLink("link", ObjectName(software.Add("target")));
    const CRepairBench bench;
    CHECK(bench.Repair(software.Path() + R"(\link)"));
    CHECK_FALSE(KeyExists(HKEY_CURRENT_USER, software.Subkey() + R"(\link)"));
    CHECK(ValueExists(HKEY_CURRENT_USER, software.Subkey() + R"(\target\sub)", "v"));
    CHECK(bench.UndoText().find("SymbolicLinkValue") != std::string::npos);
    CHECK(bench.UndoText().find("\"v\"") == std::string::npos);
}

TEST_CASE("an emptied default value is written again behind every later export that holds it") {
    PlainKey key;
    const HKEY sub = key.Add("sub");
    SetText(sub, "", "first");
    SetText(sub, "v", "x");
    const CRepairBench bench;
    CHECK(bench.Repair(key.Path() + R"(\sub)"));
    CHECK(bench.Repair(key.Path() + R"(\sub)"));  // a second row for the same key
    CHECK(bench.Repair(key.Path() + R"(\sub\"v")"));
    const std::string path = key.KeyText() + "\\sub";
    CHECK(bench.UndoText() == kHeader + ("[" + path + "]\r\n@=\"first\"\r\n\"v\"=\"x\"\r\n\r\n\r\n[" +  //
                                         path + "]\r\n@=\"\"\r\n\"v\"=\"x\"\r\n\r\n\r\n[" +             //
                                         path + "]\r\n@=\"first\"\r\n\r\n\r\n[" +                       //
                                         path + "]\r\n@=\"\"\r\n\"v\"=\"x\"\r\n\r\n\r\n[" +             //
                                         path + "]\r\n@=\"first\"\r\n\r\n"));
}

TEST_CASE(
    "the emptied key is known by whatever root an export reaches it, and exports beside it are left alone") {
    CScratchKey classes(HKEY_CLASSES_ROOT, "vellumor.test");
    SetText(classes.Get(), "", "first");
    SetText(classes.Get(), "v", "x");
    const std::string sameKey = R"(HKEY_LOCAL_MACHINE\Software\Classes\vellumor.test)";
    SetValue(HKEY_CLASSES_ROOT, "vellumor.test2", "v", "x");
    const CRepairBench bench;
    CHECK(bench.Repair(classes.Path()));
    CHECK(bench.Repair(R"(\HKEY_CLASSES_ROOT\vellumor.test2\"v")"));
    CHECK(bench.Repair("\\" + sameKey + R"(\"v")"));
    ::RegDeleteKeyA(HKEY_CLASSES_ROOT, "vellumor.test2");
    CHECK(bench.Exports() == std::vector<std::string>{classes.Path().substr(1),
                                                      R"(HKEY_CLASSES_ROOT\vellumor.test2)", sameKey,
                                                      classes.Path().substr(1)});
    CHECK(bench.UndoText().ends_with("@=\"first\"\r\n\r\n"));
}
