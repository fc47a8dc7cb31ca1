#include "tests/e2e/golden_rows.h"

using enum Written;

std::vector<GoldenGroup> GoldenRowsOfPlaces26To37() {
    return {
        // Place 26: current versions
        {R"(\HKEY_CLASSES_ROOT)",
         {
             {R"(\VmGold.CurVer1\CurVer)", Above1, "", ""},                    // (a)
             {R"(\VmGold.CurVer2\CurVer)", Above1, "", ""},                    // (b)
             {R"(\VmGold.CurVer3\CurVer)", Above1, "", "VmGold.GoneVersion"},  // (c)
         }},
        // Place 27: application ids
        {R"(\HKEY_CLASSES_ROOT\AppID)", {{R"(\VmGold.exe)", Here, "AppID", "{VmGold-NoId}"}}},
        // Place 28: the browser's cache folders, history folder and local page
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Internet Settings)",
         {
             {R"(\Cache\Paths\VmGold1)", Here, "CachePath", R"(VmGold\cache)"},
             {R"(\Url History)", Never, "Directory", R"(VmGold\history)"},
         }},
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Internet Explorer\Main)",
         {{"", Never, "Local Page", R"(VmGold\page.htm)"}}},  // what the history key holds
        // Place 29: media traces
        {R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Tracing\LccMedia)",
         {{R"(\VmGold1)", Here, "FileDirectory", R"(VmGold\media)"}}},
        // Place 30: program display names
        {R"(\HKEY_CURRENT_USER\SOFTWARE\Microsoft\Windows\ShellNoRoam\MUICache)",
         {
             {"", Never, "", "VmGold name"},
             {"", Never, R"(C:\VmGold\shown.exe)", "Shown name"},
         }},
        // Place 31: message files and service images
        {R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services)",
         {
             {R"(\Eventlog\Application\VmGold1)", Here, "EventMessageFile", "VmGold-events.dll"},
             {R"(\VmGold1)", Here, "ImagePath", R"(\??\C:\VmGold\service.sys)"},
             {R"(\VmGold2)", Here, "ImagePath", R"(system32\drivers\VmGold.sys)"},
             {R"(\Eventlog\System\VmGold1)", Here, "EventMessageFile", "VmGold-system.dll"},
             {R"(\WinTrust\SubjectPackages\VmGold1)", Here, "$DLL", "VmGold-trust.dll"},
         }},
        // Place 32: empty file types
        {R"(\HKEY_CLASSES_ROOT)",
         {
             {R"(\.VmGold1)", Here, "", ""},
             {R"(\.VmGold2)", Here, "", ""},
         }},
        // Place 33: content types
        {R"(\HKEY_CLASSES_ROOT\MIME\Database\Content Type)",
         {
             {R"(\VmGold/1)", Here, "", ""},                      // (a)
             {R"(\VmGold/2)", Here, "Extension", ".VmGoldNone"},  // (b)
             {R"(\VmGold/2)", Here, "CLSID", "{VmGold-NoMime}"},  // (c)
         }},
        // Place 34: CD player providers
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Applets\DeluxeCD\Providers)",
         {{R"(\VmGold1)", Here, "ProviderLogo", R"(VmGold\logo.bmp)"}}},
        // Place 35: extensions and their types
        {R"(\HKEY_CLASSES_ROOT)",
         {
             {R"(\.VmGold1)", Here, "", ""},                 // (b)
             {R"(\.VmGold3)", Here, "", "VmGold.GoneType"},  // (a)
         }},
        // Place 36: software keys
        {R"(\HKEY_CURRENT_USER\Software)", {{R"(\VmGoldEmpty)", Here, "", ""}}},
        {R"(\HKEY_LOCAL_MACHINE\Software)", {{R"(\VmGoldEmpty)", Here, "", ""}}},
        // Place 37: programs run at logon
        {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)",
         {
             {"", Never, "", ""},                                              // (b)
             {"", Never, "VmGoldThere", R"(C:\windows\regedit.exe /VmGold)"},  // (a)
         }},
    };
}
