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

/// Names of which several read alike in a narrow call.
std::vector<std::wstring> NamesThatReadAlike() {
    const std::wstring mark = kWideMark;
    return {mark,
            mark + kZero + L"behind",  // which is cut to the one before
            mark + L"\x0100",
            mark + L"A",
            mark + L"\xFF21",
            mark + L"\x4E2D",
            mark + L"?"};
}

/// Texts of any characters, of which names of values may consist.
std::vector<std::wstring> HostileTexts() {
    const std::wstring mark = kWideMark;
    return {
        kZero + mark,
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
    for (const std::size_t length : {254u, 255u, 1000u})
        names.push_back(mark + std::wstring(length - mark.size(), L'v'));
    // An export ends at names of more than 255 bytes, so these stand behind most others.
    for (const std::size_t length : {256u, 259u, 260u, 261u, 16'383u})
        names.push_back(L"\x2122" + mark + std::wstring(length - mark.size() - 1, L'v'));
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

/// A text that no other name goes with.
RawValue TextOfTurn(const std::wstring& name, std::size_t turn) {
    return TextValue(name, L"C:\\VmHost\\gone" + std::to_wstring(turn) + L".dll");
}

/// Plants names into every so many lists, with each name into other ones.
void PlantInto(CHostileRegistry& registry, const std::vector<std::wstring>& keys,
               const std::vector<std::wstring>& values, std::size_t step) {
    std::size_t turn = 0;
    for (const std::wstring& name : keys)
        for (std::size_t list = ++turn % step; list < SubkeyLists().size(); list += step)
            registry.PlantSubkey(SubkeyLists()[list], name, TextOfTurn({}, turn));
    for (const std::wstring& name : values)
        for (std::size_t list = ++turn % step; list < ValueLists().size(); list += step)
            registry.SetValue(registry.Area(ValueLists()[list].root, ValueLists()[list].area),
                              TextOfTurn(name, turn));
}

void PlantAsKeys(CHostileRegistry& registry, HKEY parent, const std::vector<std::wstring>& names) {
    for (const std::wstring& name : names)
        registry.SetValue(registry.AddKey(parent, name), TextValue(L"x", kGone));
}

void PlantAsValues(CHostileRegistry& registry, HKEY key, const std::vector<std::wstring>& names) {
    std::size_t turn = 0;
    for (const std::wstring& name : names) registry.SetValue(key, TextOfTurn(name, ++turn));
}

}  // namespace

void PlantNames(CHostileRegistry& registry) {
    // These mean something only side by side.
    PlantInto(registry, NamesThatReadAlike(), NamesThatReadAlike(), 1);
    PlantInto(registry, HostileKeyNames(), HostileValueNames(), 3);
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        const HKEY key = registry.AddKey(registry.Area(root, L"Software"), L"VmHost names");
        PlantAsKeys(registry, key, NamesThatReadAlike());
        PlantAsKeys(registry, key, HostileKeyNames());
        const HKEY values = registry.AddKey(key, L"values");
        PlantAsValues(registry, values, NamesThatReadAlike());
        PlantAsValues(registry, values, HostileValueNames());
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
