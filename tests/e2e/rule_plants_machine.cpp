#include "tests/e2e/rule_plants.h"

namespace {

/// A record of program details that names a program.
std::string CacheRecord(const std::string& program) {
    std::string record(28, '\0');
    for (const char character : program) record.append({character, '\0'});
    return record.append(2, '\0');
}

PlantGroup ProgramLists() {
    return {
        HKEY_LOCAL_MACHINE,
        R"(SOFTWARE\Microsoft\Windows\CurrentVersion)",
        {
            Key(R"(App Management\ARPCache\VmGold1)"),
            Bytes(R"(App Management\ARPCache\VmGold2)", "SlowInfoCache", CacheRecord(R"(C:\VmGold\arp.exe)")),
            Bytes(R"(App Management\ARPCache\VmGold3)", "SlowInfoCache"),
            Bytes(R"(App Management\ARPCache\VmGold4)", "SlowInfoCache", ""),  // ends the check ...
            Key(R"(App Management\ARPCache\VmGold5)"),                         // ... before this one
            Key(R"(App Paths\VmGold1.exe)"),
            Text(R"(App Paths\VmGold2.exe)", "", R"(C:\VmGold\app.exe)"),
            Text(R"(App Paths\VmGold2.exe)", "Path", "VmGold"),
            Text(R"(App Paths\VmGold3.exe)", "First", "VmGold"),  // no default value, two texts
            Text(R"(App Paths\VmGold3.exe)", "Second", "VmGold"),
            Number(R"(App Paths\VmGold3.exe)", "Third"),
            Text(R"(App Paths\VmGold4.exe)", "", ""),
            Text(R"(App Paths\VmGold5.exe)", "Path", ""),
            Text(R"(Uninstall\VmGold1)", "DisplayIcon", R"(C:\VmGold\icon.ico,3)"),
            Text(R"(Uninstall\VmGold1)", "InstallSource", R"(VmGold\source)"),
            Text(R"(Uninstall\VmGold1)", "UninstallString", "VmGold"),
            Text(R"(Uninstall\VmGold2)", "DisplayName", "VmGold"),
            Key(R"(Uninstall\VmGold3)"),
            Text(R"(Uninstall\VmGold4)", "", ""),
            Number(R"(Uninstall\VmGold5)", "SystemComponent"),
            Number("SharedDlls", R"(C:\VmGold\shared.dll)"),
            Text(R"(Installer\Folders)", "", "VmGold nameless"),
            Text(R"(Installer\Folders)", R"(VmGold\folder)", "VmGold data"),
            Text(R"(Explorer\WebView\TemplateMacros\VmGold1)", "", "VmGold.htm"),
            Text(R"(Explorer\WebView\TemplateMacros\VmGold1)", "Named", "VmGold-not-tested.htm"),
            Text(R"(Applets\DeluxeCD\Providers\VmGold1)", "ProviderLogo", R"(VmGold\logo.bmp)"),
            Text("Run", "", ""),
            Text("Run", "VmGoldGone", "VmGold-gone.exe"),
            Text("Run", "VmGoldThere", R"(C:\windows\regedit.exe /VmGold)"),
        }};
}

PlantGroup SystemLists() {
    return {HKEY_LOCAL_MACHINE,
            "SOFTWARE",
            {
                Key("VmGoldEmpty"),
                Text(R"(Microsoft\Windows\Help)", "", R"(VmGold\nameless)"),
                Text(R"(Microsoft\Windows\Html Help)", "", R"(VmGold\nameless)"),
                Text(R"(Microsoft\Windows\Help)", "VmGold.hlp", R"(VmGold\help)"),
                Text(R"(Microsoft\Windows\Html Help)", "VmGold.chm", R"(Folder:VmGold\html)"),
                Text(R"(Microsoft\Tracing\VmGold1)", "FileDirectory", R"(%windir%\VmGold)"),
                Text(R"(Microsoft\Windows NT\CurrentVersion\Fonts)", "VmGold1", "VmGold.ttf"),
                Text(R"(Microsoft\Windows NT\CurrentVersion\Fonts)", "VmGold2", R"(C:\)"),
                Bytes(R"(Microsoft\Windows NT\CurrentVersion\Fonts)", "VmGold3"),
            }};
}

PlantGroup BrowserFolders() {
    return {
        HKEY_LOCAL_MACHINE,
        R"(SOFTWARE\Microsoft)",
        {
            Text(R"(Windows\CurrentVersion\Internet Settings\Cache\Paths\VmGold1)", "CachePath",
                 R"(VmGold\cache)"),
            Text(R"(Windows\CurrentVersion\Internet Settings\Url History)", "Directory", R"(VmGold\history)"),
            Text(R"(Windows\CurrentVersion\Internet Settings\Url History)", "Local Page",
                 R"(VmGold\page.htm)"),
            Text(R"(Internet Explorer\Main)", "Local Page", R"(VmGold\not-tested.htm)"),
        }};
}

PlantGroup Services() {
    return {HKEY_LOCAL_MACHINE,
            R"(SYSTEM\CurrentControlSet\Services)",
            {
                Text(R"(Eventlog\Application\VmGold1)", "EventMessageFile", "VmGold-events.dll"),
                Text(R"(Eventlog\Application\VmGold2)", "eventmessagefile", "VmGold-not-tested.dll"),
                Text(R"(Eventlog\System\VmGold1)", "EventMessageFile", "VmGold-system.dll"),
                Text(R"(Eventlog\System\VmGold2)", "EventMessageFile", R"(System32\VmGold-not-tested.dll)"),
                Text("VmGold1", "ImagePath", R"(\??\C:\VmGold\service.sys)"),
                Text("VmGold2", "ImagePath", R"(system32\drivers\VmGold.sys)"),
                Text(R"(WinTrust\SubjectPackages\VmGold1)", "$DLL", "VmGold-trust.dll"),
                Text(R"(WinTrust\SubjectPackages\VmGold2)", "$DLL", ""),
                Text(R"(SharedAccess\Parameters\FirewallPolicy\StandardProfile\AuthorizedApplications\List)",
                     R"(VmGold\program.exe)", "VmGold:*:Enabled"),
            }};
}

}  // namespace

std::vector<PlantGroup> MachinePlants() {
    return {ProgramLists(), SystemLists(), BrowserFolders(), Services()};
}
