#include "tests/e2e/rule_plants.h"

namespace {

PlantGroup FileExtensions() {
    return {HKEY_CURRENT_USER,
            R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)",
            {
                Text(".VmGold3", "", ""),  // a class key too
                Text(".VmGold3", "Application", "VmGold.exe"),
                Key(".VmGold4"),           // a class key too, and no default value
                Text(".VmGold5", "", ""),  // no class key
                Text(R"(.VmGold6\UserChoice)", "Progid", "VmGold.GoneChoice"),
                Key(R"(.VmGold7\OpenWithProgids)"),  // empty
                Text(R"(.VmGold8\OpenWithProgids)", "VmGoldBlank", ""),
                Text(R"(.VmGold8\OpenWithProgids)", "VmGoldText", "VmGold data"),
                Text(R"(.VmGold8\OpenWithProgids)", "VmGoldUntil", "VmGold data"),  // the root has it
                Text(R"(.VmGold8\OpenWithProgids)", "VmGoldWorse", "VmGold data"),
                Text(R"(.VmGold9\OpenWithList)", "a", "VmGold.exe"),
                Text(R"(.VmGold9\OpenWithList)", "MRUList", "a"),
                Key(R"(.VmGold9\OpenWithProgids)"),  // not tested beside OpenWithList
            }};
}

PlantGroup RecentLists() {
    return {HKEY_CURRENT_USER,
            R"(Software\Microsoft\Windows\CurrentVersion\Explorer)",
            {
                // The stored names decode to "VmGold:\one" and "VmGold:\two".
                Bytes(R"(UserAssist\{75048700-EF1F-11D0-9888-006097DEACF9}\Count)", R"(IzTbyq:\bar)"),
                Bytes(R"(UserAssist\{5E6AB780-7743-11CF-A12B-00AA004AE837}\Count)", R"(IzTbyq:\gjb)"),
                Bytes(R"(ComDlg32\LastVisitedMRU)", "VmGold"),
                Text(R"(ComDlg32\LastVisitedMRU)", "MRUList", "VmGold"),
                Text(R"(ComDlg32\OpenSaveMRU)", "VmGold", R"(C:\VmGold\saved.txt)"),
                Bytes(R"(ComDlg32\OpenSaveMRU)", "VmGoldBytes"),
                Text(R"(ComDlg32\OpenSaveMRU\.VmGold1)", "a", R"(VmGold\one.txt)"),
                Bytes(R"(ComDlg32\OpenSaveMRU\.VmGold1)", "b"),
                Text(R"(ComDlg32\OpenSaveMRU\.VmGold2)", "", "VmGold"),  // read again and again ...
                Text(R"(ComDlg32\OpenSaveMRU\.VmGold2)", "a", "VmGold"),
                Text(R"(ComDlg32\OpenSaveMRU\.VmGold3)", "a", R"(VmGold\three.txt)"),  // ... yet not for ever
                Bytes("RecentDocs", "VmGold"),
                Key(R"(RecentDocs\.VmGold1)"),
                Bytes(R"(RecentDocs\.VmGold2)", "0"),
                Bytes(R"(RecentDocs\.VmGold2)", "MRUListEx"),
                Bytes(R"(RecentDocs\.VmGold3)", "0"),
                Key(R"(RecentDocs\.VmGold3\Deeper)"),
                Text("RunMRU", "VmGold", "VmGold"),
                Bytes("StreamMRU", "VmGold"),
                Text(R"(Wallpaper\MRU)", "VmGold", "VmGold"),
                Bytes(R"(MenuOrder\Start Menu\Programs\VmGold1\VmGoldChild)", "Order"),
            }};
}

PlantGroup OtherLists() {
    return {HKEY_CURRENT_USER,
            "SOFTWARE",
            {
                Key("VmGoldEmpty"),
                Text(R"(Microsoft\Internet Explorer\TypedURLs)", "", "VmGold:"),
                Text(R"(Microsoft\Internet Explorer\TypedURLs)", "url1", "http://VmGold/"),
                Bytes(R"(Microsoft\Internet Explorer\TypedURLs)", "VmGold"),
                Text(R"(Microsoft\Installer\Products\VmGold3\SourceList)", "LastUsedSource", "n;1;VmGold"),
                Text(R"(Microsoft\Tracing\LccMedia\VmGold1)", "FileDirectory", R"(VmGold\media)"),
                Text(R"(Microsoft\Windows\ShellNoRoam\MUICache)", "", "VmGold name"),
                Text(R"(Microsoft\Windows\ShellNoRoam\MUICache)", R"(C:\VmGold\shown.exe)", "Shown name"),
                Text(R"(Microsoft\Windows\ShellNoRoam\MUICache)", "@VmGold.dll,-1", "Shown name"),
            }};
}

}  // namespace

std::vector<PlantGroup> UserPlants() { return {FileExtensions(), RecentLists(), OtherLists()}; }
