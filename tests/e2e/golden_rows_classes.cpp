#include "tests/e2e/golden_rows.h"

namespace {

using enum Written;

/// What both views of the current user's hive show.
GoldenGroup DeepUserRows(const char* root) {
    return {
        std::string(root) + R"(\Software\Microsoft\Windows)",
        {
            {R"(\CurrentVersion\Explorer\ComDlg32\OpenSaveMRU)", Here, "VmGold", R"(C:\VmGold\saved.txt)"},
            {R"(\ShellNoRoam\MUICache)", Here, R"(C:\VmGold\shown.exe)", R"(C:\VmGold\shown.exe)"},
        }};
}

}  // namespace

std::vector<GoldenGroup> GoldenDeepRows() {
    return {
        // Stage 1: HKEY_LOCAL_MACHINE
        {R"(\HKEY_LOCAL_MACHINE\Software\Classes\CLSID\{VmGold-02})",
         {
             {R"(\InprocServer32)", Here, "", R"(C:\VmGold\is32.dll)"},
             {R"(\LocalServer32)", Here, "", R"(C:\VmGold\ls32.exe)"},  // arguments cut
         }},
        {R"(\HKEY_LOCAL_MACHINE\Software\Microsoft)",
         {
             {R"(\Tracing\VmGold1)", Here, "FileDirectory", R"(C:\windows\VmGold)"},  // expanded
         }},
        {R"(\HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion)",
         {
             {R"(\App Paths\VmGold2.exe)", Here, "", R"(C:\VmGold\app.exe)"},
             {R"(\SharedDlls)", Here, R"(C:\VmGold\shared.dll)", R"(C:\VmGold\shared.dll)"},  // a name
             {R"(\Uninstall\VmGold1)", Here, "DisplayIcon", R"(C:\VmGold\icon.ico)"},
         }},
        {R"(\HKEY_LOCAL_MACHINE\System\CurrentControlSet\Services)",
         {
             {R"(\VmGold1)", Here, "ImagePath", R"(C:\VmGold\service.sys)"},  // prefix dropped
         }},
        // Stage 2: HKEY_CURRENT_USER
        DeepUserRows(R"(\HKEY_CURRENT_USER)"),
        // Stage 3: HKEY_USERS
        DeepUserRows(R"(\HKEY_USERS\<user>)"),
    };
}

namespace {

GoldenGroup ClassSubkeyRows() {
    return {R"(\HKEY_CLASSES_ROOT\CLSID)",
            {
                // a file or key that is gone
                {R"(\{VmGold-02}\DefaultIcon)", Above1, "", "VmGold-icon.dll"},
                {R"(\{VmGold-02}\InprocHandler)", Above1, "", "VmGold-ih.dll"},
                {R"(\{VmGold-02}\InprocHandler32)", Above1, "", "VmGold-ih32.dll"},
                {R"(\{VmGold-02}\InprocServer)", Above1, "", "VmGold-is.dll"},
                {R"(\{VmGold-02}\InprocServer32)", Above1, "", R"(C:\VmGold\is32.dll)"},
                {R"(\{VmGold-02}\LocalServer)", Above1, "", "VmGold-ls.exe"},
                {R"(\{VmGold-02}\LocalServer32)", Above1, "", R"(C:\VmGold\ls32.exe /x)"},
                {R"(\{VmGold-02}\ProgID)", Above1, "", "VmGold.GoneProgram"},
                {R"(\{VmGold-02}\ShellEx)", Above1, "", "VmGold-ex.dll"},
                // an empty key
                {R"(\{VmGold-03}\DefaultIcon)", Above1, "", ""},
                {R"(\{VmGold-03}\InprocHandler)", Above1, "", ""},
                {R"(\{VmGold-03}\InprocHandler32)", Above1, "", ""},
                {R"(\{VmGold-03}\InprocServer)", Above1, "", ""},
                {R"(\{VmGold-03}\InprocServer32)", Above1, "", ""},  // an empty default value
                {R"(\{VmGold-03}\LocalServer)", Above1, "", ""},
                {R"(\{VmGold-03}\LocalServer32)", Above1, "", ""},
                // no subkeys: in the round of the named value, and in the last one
                {R"(\{VmGold-03}\ShellEx)", Above1, "VmGoldName", "VmGold data"},
                {R"(\{VmGold-03}\ShellEx)", Above1, "", ""},
                {R"(\{VmGold-03}\ToolBoxBitmap32)", Above1, "", ""},  // an empty default value
            }};
}

GoldenGroup InterfaceRows() {
    return {R"(\HKEY_CLASSES_ROOT\Interface)",
            {
                // 1: an empty key
                {R"(\{VmGold-01}\TypeLib)", Above1, "", ""},
                {R"(\{VmGold-01}\ProxyStubClsid)", Above1, "", ""},
                {R"(\{VmGold-01}\ProxyStubClsid32)", Above1, "", ""},
                {R"(\{VmGold-01}\BaseInterface)", Above1, "", ""},
                // 2: a library or class that is gone
                {R"(\{VmGold-02}\TypeLib)", Above1, "", "{VmGold-NoLibrary}"},
                {R"(\{VmGold-02}\ProxyStubClsid)", Above1, "", "{VmGold-NoProxy}"},
                {R"(\{VmGold-02}\ProxyStubClsid32)", Above1, "", "{VmGold-NoProxy32}"},
                {R"(\{VmGold-02}\BaseInterface)", Above1, "", "{VmGold-01-Base}"},  // an interface, no class
            }};
}

}  // namespace

std::vector<GoldenGroup> GoldenClassRows() {
    return {
        // Stage 4: subkeys of the classes
        ClassSubkeyRows(),
        // Stage 5: links of the classes
        {R"(\HKEY_CLASSES_ROOT\CLSID)",
         {
             {R"(\{VmGold-01})", Here, "", ""},                             // 1: an empty class
             {R"(\{VmGold-02}\ProgID)", Above1, "", "VmGold.GoneProgram"},  // 2: as in stage 4
             {R"(\{VmGold-04}\VersionIndependentProgID)", Above1, "", "VmGold.GoneAnyVersion"},  // 3
             {R"(\{VmGold-04})", Here, "AppID", "{VmGold-NoApp}"},                               // 4
         }},
        // Stage 6: type libraries
        {R"(\HKEY_CLASSES_ROOT\TypeLib)",
         {
             {R"(\{VmGold-01})", Here, "", ""},                              // 1: an empty library
             {R"(\{VmGold-02}\1.0\HELPDIR)", Above2, "", ""},                // 2a: no value
             {R"(\{VmGold-02}\2.0\HELPDIR)", Above2, "", R"(VmGold\help)"},  // 2a: a gone folder
             {R"(\{VmGold-02}\2.0\0\Win16)", Above3, "", ""},                // 2b: no value
             {R"(\{VmGold-02}\2.0\0\Win32)", Above3, "", "VmGold.tlb"},      // 2b: a gone file
             {R"(\{VmGold-02}\3.0\HELPDIR)", Above2, "VmGoldFirst", R"(VmGold\third)"},  // 2a: its own name
         }},
        // Stage 7: top-level keys
        {R"(\HKEY_CLASSES_ROOT)",
         {
             {R"(\.VmGold1)", Here, "", ""},                              // 1: no value
             {R"(\.VmGold2)", Here, "", ""},                              // 1: an empty default value
             {R"(\VmGold.Class\CLSID)", Above1, "", "{VmGold-NoClass}"},  // 2
             {R"(\VmGold.Empty)", Here, "", ""},                          // 1
         }},
        // Stage 8: type libraries of the classes
        {R"(\HKEY_CLASSES_ROOT\CLSID)", {{R"(\{VmGold-04}\TypeLib)", Above1, "", "{VmGold-NoLibrary}"}}},
        // Stage 9: interfaces
        InterfaceRows(),
    };
}
