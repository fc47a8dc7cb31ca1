#include "tests/e2e/golden_rows.h"

using enum Written;

std::vector<GoldenGroup> GoldenRowsOfPlaces14To25() {
    return {
        // Place 14: uninstall entries
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)",
         {
             {R"(\VmGold1)", Here, "InstallSource", R"(VmGold\source)"},     // 1
             {R"(\VmGold1)", Here, "DisplayIcon", R"(C:\VmGold\icon.ico)"},  // 2: cut at the comma
             {R"(\VmGold2)", Here, "", ""},                                  // 3
             {R"(\VmGold3)", Here, "", ""},                                  // 3
             {R"(\VmGold3)", Here, "", ""},                                  // 4
             {R"(\VmGold4)", Here, "", ""},                                  // 3
             {R"(\VmGold4)", Here, "", ""},                                  // 5
         }},
        // Place 15: shared modules
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\SharedDlls)",
         {{"", Never, R"(C:\VmGold\shared.dll)", ""}}},
        // Place 16: help files
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows)",
         {
             {R"(\Help)", Never, "", R"(VmGold\nameless)"},
             {R"(\Help)", Never, "VmGold.hlp", R"(VmGold\help)"},
             {R"(\Html Help)", Never, "VmGold.chm", R"(Folder:VmGold\html)"},  // no such file
             {R"(\Html Help)", Never, "VmGold.chm", R"(Folder:VmGold\html)"},  // no such command
         }},
        // Place 17: installer folders
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Installer\Folders)",
         {
             {"", Never, "", "VmGold nameless"},
             {"", Never, R"(VmGold\folder)", "VmGold data"},
         }},
        // Place 18: program paths
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths)",
         {
             {R"(\VmGold1.exe)", Here, "", ""},                      // (a): no value at all
             {R"(\VmGold2.exe)", Here, "", R"(C:\VmGold\app.exe)"},  // (b)
             {R"(\VmGold3.exe)", Here, "", ""},                      // (c): for the first text
             {R"(\VmGold3.exe)", Here, "", ""},                      // (c): for the second
             {R"(\VmGold4.exe)", Here, "", ""},                      // (a): empty data
             {R"(\VmGold5.exe)", Here, "Path", ""},                  // (a): the first value's own name
             {R"(\VmGold5.exe)", Here, "", ""},                      // (c)
         }},
        // Place 19: programs that the firewall lets through
        {R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\SharedAccess\Parameters\FirewallPolicy)"
         R"(\StandardProfile\AuthorizedApplications\List)",
         {{"", Never, R"(VmGold\program.exe)", "VmGold:*:Enabled"}}},
        // Place 20: typed addresses
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Internet Explorer\TypedURLs)",
         {
             {"", Never, "", "VmGold:"},
             {"", Never, "url1", "http://VmGold/"},
         }},
        // Place 21: fonts
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)",
         {
             {"", Never, "VmGold1", "VmGold.ttf"},  // (1): not in the fonts folder
             {"", Never, "VmGold2", R"(C:\)"},      // (2): there, by a path of its own
         }},
        // Place 22: start menu order
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer)"
         R"(\MenuOrder\Start Menu\Programs)",
         {
             {R"(\VmGold1)", Here, "", "VmGold1"},
             {R"(\VmGold1\VmGoldChild)", Above1, "", "VmGoldChild"},
         }},
        // Place 23: trace folders, not expanded
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Tracing)",
         {{R"(\VmGold1)", Here, "FileDirectory", R"(%windir%\VmGold)"}}},
        // Place 24: template macros
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Explorer\WebView\TemplateMacros)",
         {{R"(\VmGold1)", Here, "", "VmGold.htm"}}},
        // Place 25: installer sources, every one that can be read
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Installer)",
         {
             {R"(\Products\VmGold1\SourceList)", Above1, "LastUsedSource", "n;1;VmGold"},
             {R"(\Patches\VmGold2\SourceList)", Above1, "LastUsedSource", "n;1;VmGold"},
         }},
        {R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Installer)",
         {{R"(\Products\VmGold3\SourceList)", Above1, "LastUsedSource", "n;1;VmGold"}}},
    };
}
