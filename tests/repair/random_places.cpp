#include "tests/repair/random_places.h"

#include "tests/repair/repair_bench.h"

namespace {

constexpr Place kPlaces[] = {
    {"HKEY_CLASSES_ROOT", "CLSID"},
    {"HKEY_CLASSES_ROOT", "TypeLib"},
    {"HKEY_CLASSES_ROOT", "Interface"},
    {"HKEY_LOCAL_MACHINE", R"(SOFTWARE\Classes\CLSID)"},
    {"HKEY_LOCAL_MACHINE", R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)"},
    {"HKEY_LOCAL_MACHINE", R"(Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache)"},
    {"HKEY_CURRENT_USER",
     R"(Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs)"},
    {"HKEY_CURRENT_USER", R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)"},
    {"HKEY_CURRENT_USER", R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs)"}};
constexpr Place kSoftware[] = {{"HKEY_CURRENT_USER", "Software"}, {"HKEY_LOCAL_MACHINE", "Software"}};

/// Names that the kinds of repair look for, and some that only resemble them. None begins with a double
/// quote: behind a backslash, that opens the value name of an entry's text.
std::string RandomName(std::mt19937& random) {
    static constexpr const char* kNames[] = {"Classes",
                                             "CLSID",
                                             "TypeLib",
                                             "Interface",
                                             "{01234567-89AB-CDEF-0123-456789ABCDEF}",
                                             "{11234567-89AB-CDEF-0123-456789ABCDEF}",
                                             "{short}",
                                             "DefaultIcon",
                                             "defaulticon",
                                             "shell",
                                             "Shell",
                                             "shellx",
                                             "open",
                                             "command",
                                             "Command",
                                             "commandx",
                                             "Microsoft",
                                             "Windows",
                                             "CurrentVersion",
                                             "App Paths",
                                             "Installer",
                                             "UserData",
                                             "Components",
                                             "Services",
                                             "Eventlog",
                                             "Application",
                                             "Uninstall",
                                             "a",
                                             "b",
                                             "x Classes",
                                             "x\"q\"",
                                             "%p%",
                                             "]",
                                             "*",
                                             "a\nb",
                                             "\xE4"};
    return kNames[Below(random, static_cast<int>(std::size(kNames)))];
}

}  // namespace

Place PlaceOf(unsigned seed) {
    const unsigned turn = seed / 2;
    return seed % 2 == 0 ? kSoftware[turn % std::size(kSoftware)] : kPlaces[turn % std::size(kPlaces)];
}

void MakePlaces() {
    for (const Place& place : kPlaces) MakeKey(RootNamed(place.rootName), place.path);
}

int Below(std::mt19937& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

std::string RandomPath(std::mt19937& random) {
    static constexpr const char* kPaths[] = {
        R"(Classes\CLSID\{01234567-89AB-CDEF-0123-456789ABCDEF}\InprocServer32)",
        R"(Classes\TypeLib\{01234567-89AB-CDEF-0123-456789ABCDEF}\1.0\0\win32)",
        R"(Classes\txtfile\DefaultIcon)",
        R"(Classes\txtfile\shell\open\command)",
        R"(Microsoft\Windows\CurrentVersion\Installer\UserData\S-1\Components\a)",
        R"(Microsoft\Windows\CurrentVersion\App Paths\a.exe)",
        R"(Services\Eventlog\Application\a)"};
    std::string path;
    for (int count = Below(random, 3); count > 0; --count) path += RandomName(random) + "\\";
    if (Below(random, 2) == 0)
        path += std::string(kPaths[Below(random, static_cast<int>(std::size(kPaths)))]) + "\\";
    return path + RandomName(random);
}
