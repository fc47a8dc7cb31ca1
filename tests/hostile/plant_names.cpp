#include "tests/hostile/hostile_registry.h"

namespace {

const std::wstring kZero(1, L'\0');
constexpr wchar_t kGone[] = LR"(C:\VmHost\gone.dll)";

std::wstring EveryByte() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\\' && byte != '\n' && byte != '\r') bytes += static_cast<char>(byte);
    return Widen(bytes);
}

/// Texts of any characters, of which names of values may consist.
std::vector<std::wstring> HostileTexts() {
    const std::wstring mark = kWideMark;
    return {
        mark + kZero + L"behind",
        kZero + mark,
        mark,  // what is left of the first
        mark + L"\x0100",
        mark + L"A",  // as the one before reads in a narrow call
        mark + L"\xFF21",
        mark + L"\x4E2D",
        mark + L"?",
        mark + L"\xFF3Cinner",
        mark + L"\xFF3C",
        L"\xFF3C" + mark,
        mark + L"\xD800",
        L"\"" + mark,
        mark + L"\"q\"",
        mark + L"\"",
        L"[" + mark + L"]",
        mark + L"]",
        mark + L"%SystemRoot%%",
        L"%" + mark + L"%s%n%x",
        L"@=" + mark,
        mark + L"=\"x\"",
        L";" + mark + L",-1",
        L"." + mark,
        L"." + mark + L" ",
        L" " + mark + L". .",
        mark + L"*?<>|",
        mark + L"/..",
        L"{" + mark + L"-01234567-89AB-CDEF-0123-45678}",  // as long as an identifier
        mark + EveryByte().substr(0, 120),
        mark + EveryByte().substr(120),
        mark + std::wstring(247, L'x'),
        mark + std::wstring(248, L'x'),
        mark + std::wstring(249, L'x'),
    };
}

std::vector<std::wstring> HostileValueNames() {
    const std::wstring mark = kWideMark;
    std::vector<std::wstring> names = HostileTexts();
    for (const std::size_t length : {254u, 255u, 259u, 260u, 261u, 1000u, 16'383u})
        names.push_back(mark + std::wstring(length - mark.size(), L'v'));
    for (const wchar_t* path :
         {LR"(\\.\VmHost)", LR"(\\?\C:\VmHost\gone.dll)", LR"(C:\VmHost\gone.dll)", LR"(\??\VmHost)",
          LR"(C:\VmHost\gone.exe" /x)", LR"(C:\VmHost\..\..\gone.exe -x)", LR"(C:\VmHost:stream)"})
        names.emplace_back(path);
    return names;
}

std::vector<std::wstring> HostileKeyNames() {
    std::vector<std::wstring> names = HostileTexts();
    for (const wchar_t* name : {L"con.VmHost", L"nul:VmHost", L"??VmHost", L"\"VmHost\""})
        names.emplace_back(name);
    return names;
}

}  // namespace

void PlantNames(CHostileRegistry& registry) {
    // Every third name goes into every third list, so that each list gets a third of them.
    std::size_t turn = 0;
    for (const std::wstring& name : HostileKeyNames())
        for (std::size_t list = ++turn % 3; list < SubkeyLists().size(); list += 3)
            registry.PlantSubkey(SubkeyLists()[list], name, TextValue({}, kGone));
    for (const std::wstring& name : HostileValueNames())
        for (std::size_t list = ++turn % 3; list < ValueLists().size(); list += 3)
            registry.SetValue(registry.Area(ValueLists()[list].root, ValueLists()[list].area),
                              TextValue(name, kGone));
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        const HKEY key = registry.AddKey(registry.Area(root, L"Software"), L"VmHost names");
        for (const std::wstring& name : HostileValueNames())
            registry.SetValue(registry.AddKey(key, L"values"), TextValue(name, kGone));
        for (const std::wstring& name : HostileKeyNames())
            registry.SetValue(registry.AddKey(key, name), TextValue(L"x", kGone));
    }
}

void PlantLineBreaks(CHostileRegistry& registry) {
    constexpr const wchar_t* kNames[] = {L"VmHost\nx",
                                         L"VmHost\r\n",
                                         L"\nVmHost",
                                         L"VmHost]\n[HKEY_CURRENT_USER",
                                         L"VmHost]\r\n\r\n[-HKEY_CURRENT_USER]",
                                         L"VmHost\"=\"\"\n\"x"};
    for (const SubkeyList& list : SubkeyLists())
        for (const wchar_t* name : kNames) registry.PlantSubkey(list, name, TextValue({}, kGone));
    for (const ValueList& list : ValueLists())
        for (const wchar_t* name : kNames)
            registry.SetValue(registry.Area(list.root, list.area),
                              TextValue(name, L"C:\\VmHost\n[HKEY_CURRENT_USER\\Software\\VmHostForged]\n"));
}
