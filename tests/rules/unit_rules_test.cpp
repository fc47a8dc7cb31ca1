#include "repair/unit_rules.h"

#include <doctest/doctest.h>

#include <span>

namespace {

constexpr const char* kMachine = "HKEY_LOCAL_MACHINE";
constexpr const char* kUser = "HKEY_CURRENT_USER";
constexpr const char* kUsers = "HKEY_USERS";
constexpr const char* kClassesRoot = "HKEY_CLASSES_ROOT";

#define GUID "{01234567-89AB-CDEF-0123-456789ABCDEF}"

using FindUnit = Unit (*)(const EntryKey&);

struct Row {
    FindUnit find;
    const char* root;
    const char* path;
    const char* unit;  // null: the entry is not of that kind
};

void CheckRows(std::span<const Row> rows) {
    for (const Row& row : rows) {
        CAPTURE(row.root);
        CAPTURE(row.path);
        const Unit unit = row.find({row.root, row.path});
        CHECK(unit.has_value() == (row.unit != nullptr));
        if (unit.has_value() && row.unit != nullptr) CHECK(*unit == row.unit);
    }
}

}  // namespace

TEST_CASE("an entry of a registered class takes the whole class") {
    constexpr Row kRows[] = {
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\CLSID\)" GUID R"(\InprocServer32)",
         R"(SOFTWARE\Classes\CLSID\)" GUID},
        {ClsidUnit, kUser, R"(Software\Classes\CLSID\)" GUID, R"(Software\Classes\CLSID\)" GUID},
        {ClsidUnit, kUsers, R"(S-1_Classes\CLSID\)" GUID R"(\a\b)", R"(S-1_Classes\CLSID\)" GUID},
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\CLSID)", nullptr},
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\CLSID\x\)" GUID, nullptr},
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\clsid\)" GUID, nullptr},
        {ClsidUnit, kClassesRoot, R"(CLSID\)" GUID, nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("a class whose name has not the length of an identifier is none") {
    constexpr Row kRows[] = {
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\CLSID\{1}\sub\name-of-38-characters-or-more-here)",
         nullptr},
        {ClsidUnit, kMachine, R"(SOFTWARE\Classes\CLSID\)" GUID "x", nullptr},
        {TypeLibUnit, kMachine, R"(SOFTWARE\Classes\TypeLib\{1})", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("an entry of a type library takes the whole type library") {
    constexpr Row kRows[] = {
        {TypeLibUnit, kMachine, R"(SOFTWARE\Classes\TypeLib\)" GUID R"(\1.0\0\win32)",
         R"(SOFTWARE\Classes\TypeLib\)" GUID},
        {TypeLibUnit, kMachine, R"(SOFTWARE\Classes\TypeLib)", nullptr},
        {TypeLibUnit, kMachine, R"(SOFTWARE\Classes\Typelib\)" GUID, nullptr},
        {TypeLibUnit, kClassesRoot, R"(TypeLib\)" GUID, nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("an entry of a default icon takes the class that has the icon") {
    constexpr Row kRows[] = {
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\txt\DefaultIcon)", R"(SOFTWARE\Classes\txt)"},
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\CLSID\{1}\DefaultIcon\x)",
         R"(SOFTWARE\Classes\CLSID\{1})"},
        {DefaultIconClassUnit, kUsers, R"(S-1_Classes\txt\DefaultIcon)", R"(S-1_Classes\txt)"},
        {DefaultIconClassUnit, kClassesRoot, R"(txt\DefaultIcon)", nullptr},
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\txt\defaulticon)", nullptr},
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\txt)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("keys that only look like a class with an icon take nothing above them") {
    constexpr Row kRows[] = {
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\DefaultIcon)", nullptr},
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\DefaultIcon\Classes\x)", nullptr},
        {DefaultIconClassUnit, kMachine, R"(SOFTWARE\Classes\txt\DefaultIconCache)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("an entry of a shell command takes the class that has the command") {
    constexpr Row kRows[] = {
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\shell\open\command)",
         R"(SOFTWARE\Classes\txt)"},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\Shell\open\Command)",
         R"(SOFTWARE\Classes\txt)"},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\Applications\a.exe\shell\open\command\x)",
         R"(SOFTWARE\Classes\Applications\a.exe)"},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\SHELL\open\command)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\shell\open\COMMAND)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\shell\open)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\open\command)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\txt\shell\open\command)", nullptr},
        {ShellCommandClassUnit, kClassesRoot, R"(txt\shell\open\command)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("keys that only look like a shell command take nothing above them") {
    constexpr Row kRows[] = {
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\shell\command)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\shell\Classes\command)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\shellex\a\command)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\shell\commandstore)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(SOFTWARE\Classes\txt\command\shell)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("a component, a program path and an event source are the entry's own key") {
#define COMPONENTS R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18\Components)"
#define APP_PATHS R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths)"
#define SOURCES R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application)"
    constexpr Row kRows[] = {
        {InstallerComponentUnit, kMachine, COMPONENTS R"(\ABC)", COMPONENTS R"(\ABC)"},
        {InstallerComponentUnit, kMachine, COMPONENTS R"(\ABC\d)", COMPONENTS R"(\ABC\d)"},
        {InstallerComponentUnit, kMachine, R"(SOFTWARE\Components\ABC)", nullptr},
        {InstallerComponentUnit, kMachine,
         R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18\Products\ABC)", nullptr},
        {AppPathUnit, kMachine, APP_PATHS R"(\a.exe)", APP_PATHS R"(\a.exe)"},
        {AppPathUnit, kUser, R"(Software\Microsoft\Windows\CurrentVersion\App Paths\a.exe)",
         R"(Software\Microsoft\Windows\CurrentVersion\App Paths\a.exe)"},
        {AppPathUnit, kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\app paths\a.exe)", nullptr},
        {EventlogSourceUnit, kMachine, SOURCES R"(\src)", SOURCES R"(\src)"},
        {EventlogSourceUnit, kMachine, R"(SYSTEM\ControlSet001\Services\Eventlog\Application\src)",
         R"(SYSTEM\ControlSet001\Services\Eventlog\Application\src)"},
        {EventlogSourceUnit, kMachine, R"(SYSTEM\CurrentControlSet\Services\Eventlog\System\src)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("the lists themselves are no entry of theirs") {
    constexpr Row kRows[] = {
        {InstallerComponentUnit, kMachine, COMPONENTS, nullptr},
        {AppPathUnit, kMachine, APP_PATHS, nullptr},
        {EventlogSourceUnit, kMachine, SOURCES, nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("an uninstall entry takes the product's key") {
#define PRODUCTS R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)"
    constexpr Row kRows[] = {
        {UninstallUnit, kMachine, PRODUCTS R"(\Foo)", PRODUCTS R"(\Foo)"},
        {UninstallUnit, kMachine, PRODUCTS R"(\Foo\sub)", PRODUCTS R"(\Foo)"},
        {UninstallUnit, kMachine, PRODUCTS, nullptr},
        {UninstallUnit, kMachine, R"(Software\Microsoft\Windows\CurrentVersion\Uninstall\Foo)", nullptr},
        {UninstallUnit, kUser, PRODUCTS R"(\Foo)", nullptr},
        {UninstallUnit, kUser, R"(x\HKEY_LOCAL_MACHINE\)" PRODUCTS R"(\Foo)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("lists of the user and the machine go by the entry's own key") {
#define EXPLORER R"(Software\Microsoft\Windows\CurrentVersion\Explorer\)"
#define MENU EXPLORER R"(MenuOrder\Start Menu\Programs\)"
#define CACHE R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache\)"
    constexpr Row kRows[] = {
        {MenuOrderUnit, kUser, MENU "Games", MENU "Games"},
        {MenuOrderUnit, kUser, MENU R"(Games\Old)", MENU R"(Games\Old)"},
        {MenuOrderUnit, kUser, EXPLORER R"(MenuOrder\Start Menu\Programs)", nullptr},
        {MenuOrderUnit, kMachine, MENU "Games", nullptr},
        {ArpCacheUnit, kMachine, CACHE "Foo", CACHE "Foo"},
        {ArpCacheUnit, kMachine, R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache)",
         nullptr},
        {ArpCacheUnit, kUser, CACHE "Foo", nullptr},
        {FileExtsUnit, kUser, EXPLORER R"(FileExts\.abc)", EXPLORER R"(FileExts\.abc)"},
        {FileExtsUnit, kUser, EXPLORER R"(FileExts\.abc\OpenWithList)",
         EXPLORER R"(FileExts\.abc\OpenWithList)"},
        {FileExtsUnit, kUser, EXPLORER R"(fileexts\.abc)", nullptr},
        {FileExtsUnit, kMachine, EXPLORER R"(FileExts\.abc)", nullptr},
        {RecentDocsUnit, kUser, EXPLORER R"(RecentDocs\.txt)", EXPLORER R"(RecentDocs\.txt)"},
        {RecentDocsUnit, kUser, EXPLORER "RecentDocs", nullptr},
        {RecentDocsUnit, kMachine, EXPLORER R"(RecentDocs\.txt)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("any key of the user's or the machine's Software is its own unit") {
    constexpr Row kRows[] = {
        {SoftwareUnit, kUser, R"(Software\a\b)", R"(Software\a\b)"},
        {SoftwareUnit, kMachine, R"(Software\a)", R"(Software\a)"},
        {SoftwareUnit, kMachine, R"(SOFTWARE\a)", nullptr},
        {SoftwareUnit, kUser, R"(SOFTWARE\a)", nullptr},
        {SoftwareUnit, kUser, "Software", nullptr},
        {SoftwareUnit, kUser, R"(SoftwareX\a)", nullptr},
        {SoftwareUnit, kUsers, R"(Software\a)", nullptr},
        {SoftwareUnit, kUsers, R"(x\HKEY_CURRENT_USER\Software\a)", nullptr},
        {SoftwareUnit, "hkey_current_user", R"(Software\a)", nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("an entry of a class, type library or interface takes what it names") {
    constexpr Row kRows[] = {
        {ComFamilyUnit, kClassesRoot, R"(CLSID\)" GUID, R"(CLSID\)" GUID},
        {ComFamilyUnit, kClassesRoot, R"(CLSID\)" GUID R"(\ProgID)", R"(CLSID\)" GUID R"(\ProgID)"},
        {ComFamilyUnit, kClassesRoot, R"(TypeLib\)" GUID R"(\1.0)", R"(TypeLib\)" GUID R"(\1.0)"},
        {ComFamilyUnit, kClassesRoot, R"(Interface\)" GUID R"(\TypeLib)", R"(Interface\)" GUID R"(\TypeLib)"},
        {ComFamilyUnit, kClassesRoot, R"(CLSID\{1}\x)", R"(CLSID\{1}\x)"},
    };
    CheckRows(kRows);
}

TEST_CASE("of the three families the first one that the text holds decides") {
    constexpr Row kRows[] = {
        {ComFamilyUnit, kClassesRoot, R"(Interface\{a}\TypeLib\{b})", R"(TypeLib\{a}\TypeLib\{b})"},
        {ComFamilyUnit, kClassesRoot, R"(TypeLib\{a}\CLSID\{b})", R"(CLSID\{a}\CLSID\{b})"},
    };
    CheckRows(kRows);
}

TEST_CASE("a key of those lists that is no identifier is removed as it stands") {
    constexpr Row kRows[] = {
        {ComFamilyUnit, kClassesRoot, R"(CLSID\word)", R"(CLSID\word)"},
        {ComFamilyUnit, kClassesRoot, "CLSIDX", "CLSIDX"},
        {ComFamilyUnit, kClassesRoot, R"(InterfaceX\a)", R"(InterfaceX\a)"},
    };
    CheckRows(kRows);
}

TEST_CASE("what is in none of the three lists is no entry of them") {
    constexpr Row kRows[] = {
        {ComFamilyUnit, kClassesRoot, ".foo", nullptr},
        {ComFamilyUnit, kClassesRoot, R"(foo\CLSID)", nullptr},
        {ComFamilyUnit, kClassesRoot, R"(clsid\)" GUID, nullptr},
        {ComFamilyUnit, kClassesRoot, R"(foo\HKEY_CLASSES_ROOT\CLSID\)" GUID, nullptr},
        {ComFamilyUnit, "hkey_classes_root", R"(CLSID\)" GUID, nullptr},
    };
    CheckRows(kRows);
}

TEST_CASE("a path is cut at its last backslash") {
    CHECK(SplitLastKey(R"(a\b\c)").parent == R"(a\b)");
    CHECK(SplitLastKey(R"(a\b\c)").name == "c");
    CHECK(SplitLastKey("a").parent == "");
    CHECK(SplitLastKey("a").name == "a");
}

TEST_CASE("a key without a name of its own, which opens the key above, is nobody's unit") {
    constexpr Row kRows[] = {
        {DefaultIconClassUnit, kMachine, R"(Software\Classes\\DefaultIcon)", nullptr},
        {ShellCommandClassUnit, kMachine, R"(Software\Classes\\shell\open\command)", nullptr},
        {UninstallUnit, kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)", nullptr},
        {AppPathUnit, kMachine, R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\)", nullptr},
        {SoftwareUnit, kMachine, R"(Software\)", nullptr},
        {SoftwareUnit, kUser, R"(Software\a\)", nullptr},
        {RecentDocsUnit, kUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\)", nullptr},
        {ComFamilyUnit, kClassesRoot, R"(CLSID\)", nullptr},
        {ComFamilyUnit, kClassesRoot, R"(CLSID\)" GUID R"(\)", nullptr},
    };
    CheckRows(kRows);
}
