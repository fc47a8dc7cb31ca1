#include "tests/e2e/rule_plants.h"

namespace {

PlantGroup TopLevelKeys() {
    return {HKEY_CLASSES_ROOT,
            "",
            {
                Text("", "VmGoldUntil", "VmGold"),                      // a value of the root itself
                Key(".VmGold1"),                                        // nothing at all
                Text(".VmGold2", "", ""),                               // an empty default value alone
                Text(".VmGold3", "", "VmGold.GoneType"),                // links to no type
                Text(".VmGold4", "", "VmGold.Class"),                   // links to a type that is there
                Text(R"(VmGold.Class\CLSID)", "", "{VmGold-NoClass}"),  // links to no class
                Key(R"(VmGold.CurVer1\CurVer)"),
                Text(R"(VmGold.CurVer2\CurVer)", "", ""),
                Text(R"(VmGold.CurVer3\CurVer)", "", "VmGold.GoneVersion"),
                Text(R"(VmGold.CurVer4\CurVer)", "", "VmGold.Class"),
                Key("VmGold.Empty"),
                Key(R"(VmGold.Icon1\DefaultIcon)"),           // no default value
                Text(R"(VmGold.Icon2\DefaultIcon)", "", ""),  // an empty one
                Key(R"(VmGold.Shell1\shell\open)"),           // a verb without a command
                Text(R"(VmGold.Shell2\shell)", "", ""),       // no verbs, and an empty default value
                Key(R"(VmGold.Shell3\shell\open\command)"),
            }};
}

PlantGroup ClassesWithSubkeys() {
    return {HKEY_CLASSES_ROOT,
            "CLSID",
            {
                Key("{VmGold-01}"),
                // Every kind of subkey, naming a file or key that is gone.
                Text(R"({VmGold-02}\DefaultIcon)", "", "VmGold-icon.dll"),
                Text(R"({VmGold-02}\InprocHandler)", "", "VmGold-ih.dll"),
                Text(R"({VmGold-02}\InprocHandler32)", "", "VmGold-ih32.dll"),
                Text(R"({VmGold-02}\InprocServer)", "", "VmGold-is.dll"),
                Text(R"({VmGold-02}\InprocServer32)", "", R"(C:\VmGold\is32.dll)"),
                Text(R"({VmGold-02}\InprocServer32)", "ThreadingModel", "VmGold-threads"),
                Text(R"({VmGold-02}\LocalServer)", "", "VmGold-ls.exe"),
                Text(R"({VmGold-02}\LocalServer32)", "", R"(C:\VmGold\ls32.exe /x)"),
                Text(R"({VmGold-02}\ProgID)", "", "VmGold.GoneProgram"),
                Text(R"({VmGold-02}\ShellEx)", "", "VmGold-ex.dll"),
                Key(R"({VmGold-02}\ShellEx\VmGoldHandler)"),
                Text(R"({VmGold-02}\ToolBoxBitmap32)", "", "VmGold-not-tested.bmp"),
                Key(R"({VmGold-02}\VmGoldOther)"),
                // Every kind of subkey, empty.
                Key(R"({VmGold-03}\DefaultIcon)"),
                Key(R"({VmGold-03}\InprocHandler)"),
                Key(R"({VmGold-03}\InprocHandler32)"),
                Key(R"({VmGold-03}\InprocServer)"),
                Text(R"({VmGold-03}\InprocServer32)", "", ""),
                Key(R"({VmGold-03}\LocalServer)"),
                Text(R"({VmGold-03}\LocalServer32)", "", ""),
                Key(R"({VmGold-03}\ProgID)"),
                Text(R"({VmGold-03}\ShellEx)", "VmGoldName", "VmGold data"),
                Text(R"({VmGold-03}\ToolBoxBitmap32)", "", ""),
                // The links.
                Text("{VmGold-04}", "AppID", "{VmGold-NoApp}"),
                Text(R"({VmGold-04}\TypeLib)", "", "{VmGold-NoLibrary}"),
                Text(R"({VmGold-04}\VersionIndependentProgID)", "", "VmGold.GoneAnyVersion"),
            }};
}

PlantGroup TypeLibraries() {
    return {HKEY_CLASSES_ROOT,
            "TypeLib",
            {
                Key("{VmGold-01}"),
                Key(R"({VmGold-02}\1.0\HELPDIR)"),
                Text(R"({VmGold-02}\2.0\HELPDIR)", "", R"(VmGold\help)"),
                Key(R"({VmGold-02}\2.0\0\Win16)"),
                Text(R"({VmGold-02}\2.0\0\Win32)", "", "VmGold.tlb"),
                Text(R"({VmGold-02}\3.0\HELPDIR)", "VmGoldFirst", R"(VmGold\third)"),
                Key(R"({VmGold-Library}\1.0)"),
            }};
}

PlantGroup Interfaces() {
    return {HKEY_CLASSES_ROOT,
            "Interface",
            {
                Key(R"({VmGold-01}\BaseInterface)"),
                Key(R"({VmGold-01}\ProxyStubClsid)"),
                Key(R"({VmGold-01}\ProxyStubClsid32)"),
                Key(R"({VmGold-01}\TypeLib)"),
                // An interface that is there, but no class of that name.
                Text(R"({VmGold-02}\BaseInterface)", "", "{VmGold-01-Base}"),
                Key(R"({VmGold-01-Base}\NumMethods)"),
                Text(R"({VmGold-02}\ProxyStubClsid)", "", "{VmGold-NoProxy}"),
                Text(R"({VmGold-02}\ProxyStubClsid32)", "", "{VmGold-NoProxy32}"),
                Text(R"({VmGold-02}\TypeLib)", "", "{VmGold-NoLibrary}"),
                // Links to a class and to a library that are there.
                Text(R"({VmGold-03}\BaseInterface)", "", "{VmGold-04}"),
                Text(R"({VmGold-03}\ProxyStubClsid)", "", "{VmGold-04}"),
                Text(R"({VmGold-03}\ProxyStubClsid32)", "", "{VmGold-04}"),
                Text(R"({VmGold-03}\TypeLib)", "", "{VmGold-Library}"),
            }};
}

}  // namespace

std::vector<PlantGroup> ClassPlants() {
    return {
        TopLevelKeys(),
        ClassesWithSubkeys(),
        TypeLibraries(),
        Interfaces(),
        {HKEY_CLASSES_ROOT, "AppID", {Text("VmGold.exe", "AppID", "{VmGold-NoId}")}},
        {HKEY_CLASSES_ROOT,
         R"(MIME\Database\Content Type)",
         {
             Key("VmGold/1"),
             Text("VmGold/2", "Extension", ".VmGoldNone"),
             Text("VmGold/2", "CLSID", "{VmGold-NoMime}"),
         }},
        {HKEY_CLASSES_ROOT,
         "Installer",
         {
             Text(R"(Products\VmGold1\SourceList)", "LastUsedSource", "n;1;VmGold"),
             Text(R"(Patches\VmGold2\SourceList)", "LastUsedSource", "n;1;VmGold"),
         }},
    };
}
