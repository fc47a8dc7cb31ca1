#include "analysis/classes/class_checks.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "check_support.h"
#include "tests/support/call_hook.h"

namespace {

/// The rows about one class key, which `plant` fills.
template <class Plant>
std::string RowsOfClass(Plant plant, const std::string& name = "Some.Class") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, name, "", "Some class");
    plant(registry, name);
    return RowsOf(&CheckClassKeys);
}

std::string RowsOfShell(const std::vector<std::string>& subkeys) {
    return RowsOfClass([&](CScratchRegistry& registry, const std::string& name) {
        registry.Add(HKEY_CLASSES_ROOT, name + "\\shell");
        for (const std::string& subkey : subkeys)
            registry.Add(HKEY_CLASSES_ROOT, name + "\\shell\\" + subkey);
    });
}

/// The rows of an icon key whose default value is set to exactly these bytes.
std::string RowsOfIcon(const std::string& bytes, DWORD type = REG_SZ) {
    return RowsOfClass([&](CScratchRegistry& registry, const std::string& name) {
        SetBytes(registry.Add(HKEY_CLASSES_ROOT, name + "\\DefaultIcon"), "", type, bytes);
    });
}

const std::string kShellRow = "\\HKEY_CLASSES_ROOT\\Some.Class\\shell|||\n";
const std::string kIconRow = "\\HKEY_CLASSES_ROOT\\Some.Class\\DefaultIcon|||\n";

}  // namespace

TEST_CASE("a class key without subkeys and values is reported without a write time") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "Empty.Class");
    CHECK(RowsOf(&CheckClassKeys) == "\\HKEY_CLASSES_ROOT\\Empty.Class|||\n");
}

TEST_CASE("a class key with any value or subkey is not reported") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "WithEmptyDefault", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, "WithNamed", "x", "");
    registry.Add(HKEY_CLASSES_ROOT, "WithSubkey\\x");
    registry.AddText(HKEY_CLASSES_ROOT, "WithLargeData", "x", std::string(250, 'd'));
    registry.AddText(HKEY_CLASSES_ROOT, "WithLongName", std::string(250, 'n'), "");
    CHECK(RowsOf(&CheckClassKeys).empty());
}

TEST_CASE("a class key that grants reading alone, or nothing, is passed over") {
    CScratchRegistry registry;
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Readable"));
    registry.Lock(registry.Add(HKEY_CLASSES_ROOT, "Locked"));
    registry.Add(HKEY_CLASSES_ROOT, "Open");
    CHECK(RowsOf(&CheckClassKeys) == "\\HKEY_CLASSES_ROOT\\Open|||\n");
}

TEST_CASE("a shell key is reported when no verb of it has a command") {
    CHECK(RowsOfShell({}) == kShellRow);
    CHECK(RowsOfShell({"open"}) == kShellRow);
    CHECK(RowsOfShell({"open", "print\\ddeexec"}) == kShellRow);
}

TEST_CASE("one verb with a command is enough for a shell key") {
    CHECK(RowsOfShell({"open\\command"}).empty());
    CHECK(RowsOfShell({"edit", "open\\command", "print"}).empty());
    CHECK(RowsOfShell({"OPEN\\Command"}).empty());
}

TEST_CASE("a command key that does not open for all access is no command") {
    const std::string rows = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, name + "\\shell\\open\\command"));
    });
    CHECK(rows == kShellRow);
}

TEST_CASE("verbs of 99 characters count, longer ones do not") {
    const auto rowsOfVerb = [](std::size_t length, const std::string& second) {
        std::vector<std::string> subkeys(1, std::string(length, 'v').append("\\command"));
        subkeys.push_back(second);
        return RowsOfShell(subkeys);
    };
    CHECK(rowsOfVerb(98, "w").empty());
    CHECK(rowsOfVerb(99, "w").empty());
    CHECK(rowsOfVerb(100, "w") == kShellRow);
    CHECK(rowsOfVerb(100, "w\\command").empty());
}

TEST_CASE("a shell key without verbs and with an empty default value gives two rows") {
    const std::string rows = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.AddText(HKEY_CLASSES_ROOT, name + "\\shell", "", "");
    });
    CHECK(rows == kShellRow + kShellRow);
}

TEST_CASE("a shell key's default value gives no row of its own when it has data, a name or verbs beside it") {
    const auto rowsOfValue = [](const std::string& valueName, const std::string& data, const char* verb) {
        return RowsOfClass([&](CScratchRegistry& registry, const std::string& name) {
            registry.AddText(HKEY_CLASSES_ROOT, name + "\\shell", valueName, data);
            if (verb != nullptr) registry.Add(HKEY_CLASSES_ROOT, name + "\\shell\\" + verb);
        });
    };
    CHECK(rowsOfValue("", "open", nullptr) == kShellRow);
    CHECK(rowsOfValue("named", "", nullptr) == kShellRow);
    CHECK(rowsOfValue("", "", "open") == kShellRow);
    CHECK(rowsOfValue("", "", "open\\command").empty());
}

TEST_CASE("a shell key's values are read into 250 bytes") {
    const auto rowsOfBytes = [](std::size_t bytes) {
        return RowsOfClass([bytes](CScratchRegistry& registry, const std::string& name) {
            SetBytes(registry.Add(HKEY_CLASSES_ROOT, name + "\\shell"), "", REG_SZ, std::string(bytes, '\0'));
        });
    };
    CHECK(rowsOfBytes(249) == kShellRow + kShellRow);
    CHECK(rowsOfBytes(250) == kShellRow + kShellRow);
    CHECK(rowsOfBytes(251) == kShellRow);
}

TEST_CASE("a shell key that does not open for all access is passed over") {
    const std::string rows = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, name + "\\shell"));
    });
    CHECK(rows.empty());
}

TEST_CASE("an icon key without a default value is reported once") {
    const std::string rows = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.Add(HKEY_CLASSES_ROOT, name + "\\DefaultIcon");
    });
    CHECK(rows == kIconRow);
    const std::string withNamed = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.AddText(HKEY_CLASSES_ROOT, name + "\\DefaultIcon", "named", "x");
    });
    CHECK(withNamed == kIconRow);
}

TEST_CASE("an icon key with an empty default value is reported once, one with a text is not") {
    CHECK(RowsOfIcon(std::string(1, '\0')) == kIconRow);
    CHECK(RowsOfIcon("") == kIconRow);
    CHECK(RowsOfIcon("%1").empty());
    CHECK(RowsOfIcon("C:\\gone\\x.ico").empty());  // no file is tested
}

TEST_CASE("an icon key's default value is read into 100 bytes, a larger one is passed over") {
    CHECK(RowsOfIcon(std::string(99, '\0')) == kIconRow);
    CHECK(RowsOfIcon(std::string(100, '\0')) == kIconRow);
    CHECK(RowsOfIcon(std::string(101, '\0')).empty());
}

TEST_CASE("an icon key with a subkey, or without write access, is passed over") {
    const std::string withSubkey = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.Add(HKEY_CLASSES_ROOT, name + "\\DefaultIcon\\x");
    });
    CHECK(withSubkey.empty());
    const std::string readOnly = RowsOfClass([](CScratchRegistry& registry, const std::string& name) {
        registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, name + "\\DefaultIcon"));
    });
    CHECK(readOnly.empty());
}

TEST_CASE("the rows of class keys come class by class, the shell before the icon") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "B.Class\\shell");
    registry.Add(HKEY_CLASSES_ROOT, "B.Class\\DefaultIcon");
    registry.Add(HKEY_CLASSES_ROOT, "C.Class");
    registry.Add(HKEY_CLASSES_ROOT, "A.Class\\DefaultIcon");
    CHECK(RowsOf(&CheckClassKeys) ==
          Lines({"\\HKEY_CLASSES_ROOT\\A.Class\\DefaultIcon|||", "\\HKEY_CLASSES_ROOT\\B.Class\\shell|||",
                 "\\HKEY_CLASSES_ROOT\\B.Class\\DefaultIcon|||", "\\HKEY_CLASSES_ROOT\\C.Class|||"}));
}

TEST_CASE("a class name of 255 characters is reported whole") {
    CScratchRegistry registry;
    const std::string name(255, 'n');
    registry.Add(HKEY_CLASSES_ROOT, name);
    CHECK(RowsOf(&CheckClassKeys) == "\\HKEY_CLASSES_ROOT\\" + name + "|||\n");
}

TEST_CASE("file-type keys that hold nothing at any level are reported") {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, ".a");
    registry.AddText(HKEY_CLASSES_ROOT, ".b\\c\\d", "", "");
    registry.AddText(HKEY_CLASSES_ROOT, ".e", "", "");
    CHECK(RowsOf(&CheckEmptyFileTypes) ==
          Lines({"\\HKEY_CLASSES_ROOT\\.a|timed||", "\\HKEY_CLASSES_ROOT\\.b|timed||",
                 "\\HKEY_CLASSES_ROOT\\.e|timed||"}));
}

TEST_CASE("file-type keys that hold a value, other names and keys without write access are not reported") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, ".a", "", "type");
    registry.AddText(HKEY_CLASSES_ROOT, ".b\\c", "x", "");
    registry.Add(HKEY_CLASSES_ROOT, "empty");
    registry.Add(HKEY_CLASSES_ROOT, "a.b");
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, ".readonly"));
    CHECK(RowsOf(&CheckEmptyFileTypes).empty());
}

namespace {

LSTATUS WINAPI AnswerNoMoreItems(HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) {
    return ERROR_NO_MORE_ITEMS;
}

LSTATUS WINAPI AnswerNotFound(HKEY, DWORD, LPSTR, LPDWORD, LPDWORD, LPDWORD, LPBYTE, LPDWORD) {
    return ERROR_FILE_NOT_FOUND;
}

}  // namespace

// No system answers so; the calls are replaced to show that the answers count.

TEST_CASE("an icon whose query answers that there are no more items is reported") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "Some.Class\\DefaultIcon", "", "icon");
    const CCallHook hook("RegQueryValueExA",
                         reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&AnswerNoMoreItems)));
    CHECK(RowsOf(&CheckClassKeys) == "\\HKEY_CLASSES_ROOT\\Some.Class\\DefaultIcon|||\n");
}

TEST_CASE("a class whose first value is answered as not found is reported like one without a value") {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "Some.Class", "", "text");
    CHECK(RowsOf(&CheckClassKeys).empty());
    const CCallHook hook("RegEnumValueA",
                         reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&AnswerNotFound)));
    CHECK(RowsOf(&CheckClassKeys) == "\\HKEY_CLASSES_ROOT\\Some.Class|||\n");
}
