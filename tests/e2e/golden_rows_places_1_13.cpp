#include "tests/e2e/golden_rows.h"

namespace {

using enum Written;

/// Places 1 and 7: what Explorer keeps per extension.
GoldenGroup FileExtensionRows() {
    return {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)",
            {
                {R"(\.VmGold3)", Here, "", ""},  // step 1: an empty default value
                {R"(\.VmGold4)", Here, "", ""},  // step 1: no default value ...
                {R"(\.VmGold4)", Here, "", ""},  // ... which also reads as empty
                {R"(\.VmGold4)", Here, "", ""},  // step 2: the same two
                {R"(\.VmGold4)", Here, "", ""},
                {R"(\.VmGold5)", Here, "", ""},                   // step 2: an empty default value
                {R"(\.VmGold6)", Here, "", "VmGold.GoneChoice"},  // step 3
                {R"(\.VmGold7)", Here, "", ""},                   // step 4a
                {R"(\.VmGold8\OpenWithProgids)", Above1, "VmGoldText", "VmGold data"},  // 4c, and stop
            }};
}

GoldenGroup ClassKeyRows() {
    return {R"(\HKEY_CLASSES_ROOT)",
            {
                {R"(\.VmGold1)", Never, "", ""},                  // (a)
                {R"(\VmGold.Empty)", Never, "", ""},              // (a)
                {R"(\VmGold.Icon1\DefaultIcon)", Never, "", ""},  // (e): no default value, so not (d)
                {R"(\VmGold.Icon2\DefaultIcon)", Never, "", ""},  // (e)
                {R"(\VmGold.Shell1\shell)", Never, "", ""},       // (b)
                {R"(\VmGold.Shell2\shell)", Never, "", ""},       // (b)
                {R"(\VmGold.Shell2\shell)", Never, "", ""},       // (c)
            }};
}

GoldenGroup OpenSaveRows() {
    return {
        R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\OpenSaveMRU)",
        {
            {"", Never, "VmGold", R"(C:\VmGold\saved.txt)"},     // text alone
            {R"(\.VmGold1)", Here, "a", R"(VmGold\one.txt)"},    // text
            {R"(\.VmGold1)", Here, "b", ""},                     // other data are not shown
            {R"(\.VmGold3)", Here, "a", R"(VmGold\three.txt)"},  // nothing behind .VmGold2's default value
        }};
}

GoldenGroup RecentDocumentRows() {
    return {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs)",
            {
                {"", Never, "VmGold", ""},                // place 9
                {R"(\.VmGold1)", Here, "", ""},           // place 10, (1)
                {R"(\.VmGold2)", Here, "0", ""},          // place 10, (3)
                {R"(\.VmGold2)", Here, "MRUListEx", ""},  // and nothing of .VmGold3, (2)
            }};
}

}  // namespace

std::vector<GoldenGroup> GoldenRowsOfPlaces1To13() {
    return {
        // Place 1
        FileExtensionRows(),
        // Place 2: shell, command and DefaultIcon
        ClassKeyRows(),
        // Place 3: program details; .VmGold4 ends the check
        {R"(\HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache)",
         {
             {R"(\VmGold1)", Never, "", ""},                                   // 1: no record
             {R"(\VmGold2)", Never, "SlowInfoCache", R"(C:\VmGold\arp.exe)"},  // 4
             {R"(\VmGold3)", Never, "SlowInfoCache", ""},                      // 4: a short record
         }},
        // Place 4: usage counters, decoded
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\UserAssist)",
         {
             {R"(\{75048700-EF1F-11D0-9888-006097DEACF9}\Count)", Never, R"(IzTbyq:\bar)", R"(VmGold:\one)"},
             {R"(\{5E6AB780-7743-11CF-A12B-00AA004AE837}\Count)", Never, R"(IzTbyq:\gjb)", R"(VmGold:\two)"},
         }},
        // Place 5: MRUList included
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\LastVisitedMRU)",
         {
             {"", Never, "MRUList", ""},
             {"", Never, "VmGold", ""},
         }},
        // Place 6
        OpenSaveRows(),
        // Place 7
        FileExtensionRows(),
        // Place 8: programs per extension
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)",
         {
             {R"(\.VmGold9\OpenWithList)", Above1, "a", "VmGold.exe"},
             {R"(\.VmGold9\OpenWithList)", Above1, "MRUList", "a"},
             {R"(\.VmGold9\OpenWithList)", Above1, "", ""},  // the key's own row
         }},
        // Places 9 and 10
        RecentDocumentRows(),
        // Places 11 to 13
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer)",
         {
             {R"(\RunMRU)", Never, "VmGold", ""},
             {R"(\StreamMRU)", Never, "VmGold", ""},
             {R"(\Wallpaper\MRU)", Never, "VmGold", ""},
         }},
    };
}
