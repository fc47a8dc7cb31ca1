// Asks every kind of repair for the unit of any key, and checks that the unit is the key or contains it.
#include "repair/unit_rules.h"

#include "registry/key_path_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

using UnitRule = Unit (*)(const EntryKey& key);

constexpr UnitRule kRules[] = {
    ClsidUnit,    TypeLibUnit,        DefaultIconClassUnit, ShellCommandClassUnit, InstallerComponentUnit,
    AppPathUnit,  EventlogSourceUnit, UninstallUnit,        MenuOrderUnit,         ArpCacheUnit,
    SoftwareUnit, FileExtsUnit,       RecentDocsUnit};

constexpr std::string_view kAreas[] = {
    "",
    R"(Software\Classes\CLSID\{00000000-0000-0000-0000-000000000000})",
    R"(Software\Classes\TypeLib\{00000000-0000-0000-0000-000000000000})",
    R"(Software\Classes\)",
    R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\UserData\)",
    R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\)",
    R"(SYSTEM\CurrentControlSet\Services\Eventlog\Application\)",
    R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)",
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs\)",
    R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache\)",
    R"(Software\)",
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\)",
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\)",
    R"(CLSID\{00000000-0000-0000-0000-000000000000})",
    R"(TypeLib\)",
    R"(Interface\)",
};

/// Whether a key is a unit's own key, or lies in it.
bool Contains(const std::string& unit, std::string_view path) {
    return path == unit || path.starts_with(unit + "\\");
}

void CheckComFamily(const EntryKey& key) {
    const Unit unit = ComFamilyUnit(key);
    if (!unit.has_value()) return;
    Require(!SplitLastKey(*unit).name.empty(), "a unit has a name of its own");
    Require(key.rootName.ends_with("HKEY_CLASSES_ROOT"), "the three lists are below one root");
    const std::size_t name = unit->find('\\');
    const std::size_t own = key.subkeyPath.find('\\');
    if (*unit == key.subkeyPath) return;
    // Deliberate: the same key of another of the three lists, where that one's name stands further down.
    Require(name != std::string::npos && own != std::string_view::npos, "a list is not a unit");
    Require(unit->substr(name) == key.subkeyPath.substr(own), "below its list the path stays");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::uint8_t choice = input.TakeByte();
    const std::string_view root = kRootKeyTable[choice % std::size(kRootKeyTable)].name;
    std::string text(kAreas[input.TakeByte() % std::size(kAreas)]);
    text += input.Rest();
    const CExactBuffer path = CExactBuffer::Unterminated(text);
    const EntryKey key{root, path.View()};
    for (const UnitRule rule : kRules) {
        const Unit unit = rule(key);
        if (!unit.has_value()) continue;
        Require(Contains(*unit, path.View()), "a unit contains the entry's own key");
        Require(!SplitLastKey(*unit).name.empty(), "a unit has a name of its own");
    }
    CheckComFamily(key);
    const ParentAndName cut = SplitLastKey(path.View());
    Require(cut.name.find('\\') == std::string::npos, "a name is one key's");
    const bool isTop = text.find('\\') == std::string::npos;
    Require((isTop ? cut.name : cut.parent + "\\" + cut.name) == text, "parent and name are the path");
    return 0;
}
