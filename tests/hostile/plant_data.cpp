#include <algorithm>
#include <iterator>

#include "tests/hostile/hostile_registry.h"

namespace {

constexpr wchar_t kGone[] = LR"(C:\VmHost\gone.dll)";
constexpr std::size_t kExportedBytes = 16'384;  // an export ends at data of more

/// A path of a file that is gone, filled up to so many bytes.
std::string PathOfBytes(std::size_t bytes) {
    const std::wstring path = kGone;
    std::string data = Bytes(path + std::wstring(bytes / sizeof(wchar_t), L'x'));
    data.resize(bytes);
    return data;
}

std::wstring EveryByte() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return Widen(bytes);
}

std::vector<RawValue> HardSizes() {
    std::vector<RawValue> values;
    for (const DWORD type : {REG_SZ, REG_EXPAND_SZ, REG_BINARY})
        for (const std::size_t bytes : {0u, 1u, 2u, 3u, 249u, 250u, 251u, 259u, 260u, 261u, 499u, 500u, 501u,
                                        519u, 520u, 521u, 522u, 16'384u, 16'385u})
            values.push_back({{}, type, PathOfBytes(bytes)});
    return values;
}

std::vector<RawValue> HardTexts() {
    const std::wstring path = kGone;
    std::vector<RawValue> values;
    for (DWORD type = 0; type <= 11; ++type) {
        values.push_back({L"", type, Bytes(path)});        // without an end
        values.push_back({L"", type, Bytes(path) + "z"});  // of odd length
        values.push_back({L"", type, "C:\\VmHost\\gone.dll"});
    }
    values.push_back({L"", REG_SZ, Bytes(path + L'\0' + path)});
    values.push_back({L"", REG_SZ, Bytes(std::wstring(1, L'\0') + path)});
    values.push_back({L"", REG_MULTI_SZ, Bytes(path + L'\0' + path)});
    values.push_back({L"", REG_SZ, Bytes(L"C:\\VmHost\\" + EveryByte())});
    values.push_back({L"", REG_SZ, Bytes(L"\"C:\\VmHost\\" + EveryByte() + L"\"")});
    values.push_back({L"", REG_BINARY, Narrow(L"C:\\VmHost\\" + EveryByte())});
    values.push_back({L"", REG_SZ, Bytes(L"C:\\VmHost\\\xD800\xFF3C\x4E2D")});
    return values;
}

/// Values of types that nobody has named.
std::vector<RawValue> UnknownTypes() {
    const std::wstring path = kGone;
    return {{L"", 0xFFFFFFFF, Bytes(path)}, {L"", 0x80000000, Bytes(path + L'\0')}};
}

/// An export ends at a value that is too large for it, so the name of one stands behind all the others.
std::wstring NameOf(const RawValue& value, std::size_t turn) {
    const bool endsExport = value.type == REG_BINARY && value.data.size() > kExportedBytes;
    return (endsExport ? L"VmHostToo" : L"VmHost") + std::to_wstring(turn);
}

/// Plants each value into every third list, beginning one list later after each three of them: what comes
/// again with every third value would always meet the same lists otherwise.
void PlantInTurn(CHostileRegistry& registry, const std::vector<RawValue>& values) {
    std::size_t turn = 0;
    for (const RawValue& value : values) {
        const std::wstring name = NameOf(value, turn);
        const std::size_t first = (turn + turn / 3) % 3;
        for (std::size_t list = first; list < SubkeyLists().size(); list += 3)
            registry.PlantSubkey(SubkeyLists()[list], name, value);
        for (std::size_t list = first; list < ValueLists().size(); list += 3)
            registry.SetValue(registry.Area(ValueLists()[list].root, ValueLists()[list].area),
                              {name, value.type, value.data});
        ++turn;
    }
}

void PlantEverywhere(CHostileRegistry& registry, const RawValue& value, const std::wstring& name) {
    for (const SubkeyList& list : SubkeyLists()) registry.PlantSubkey(list, name, value);
    for (const ValueList& list : ValueLists())
        registry.SetValue(registry.Area(list.root, list.area), {name, value.type, value.data});
}

/// Values of 1 MiB. One in every list would only fill the disk.
void PlantLarge(CHostileRegistry& registry) {
    const RawValue large{L"", REG_SZ, PathOfBytes(1 << 20)};
    for (std::size_t list = 0; list < SubkeyLists().size(); list += 8)
        registry.PlantSubkey(SubkeyLists()[list], L"VmHostLarge", large);
    // In the first list, no export gets to any other planted value; in the others, it gets to all of them.
    for (std::size_t list = 0; list < ValueLists().size(); list += 4)
        registry.SetValue(registry.Area(ValueLists()[list].root, ValueLists()[list].area),
                          {list == 0 ? L"VmHost" : L"VmHostToo large", large.type, large.data});
}

}  // namespace

void PlantData(CHostileRegistry& registry) {
    // In one go: the names of a second one would be those of the first again.
    std::vector<RawValue> values = HardSizes();
    std::ranges::move(HardTexts(), std::back_inserter(values));
    PlantInTurn(registry, values);
    int count = 0;
    for (const RawValue& value : UnknownTypes())
        PlantEverywhere(registry, value, L"VmHostType" + std::to_wstring(++count));
    PlantLarge(registry);
}

void PlantReferences(CHostileRegistry& registry) {
    const std::wstring longest(240, L'%');
    std::vector<RawValue> values;
    for (const std::wstring& text : {std::wstring(LR"(\\.\C:)"),
                                     std::wstring(LR"(\\.\PhysicalDrive0)"),
                                     std::wstring(LR"(\\.\pipe\VmHost)"),
                                     std::wstring(LR"(\\?\C:\VmHost\gone.dll)"),
                                     std::wstring(LR"(\\?\unix\dev\zero)"),
                                     std::wstring(LR"(\??\C:\VmHost\gone.sys)"),
                                     std::wstring(LR"(\Device\HarddiskVolume1\VmHost)"),
                                     std::wstring(LR"(\\VmHost\share\gone.dll)"),
                                     std::wstring(LR"(\\127.0.0.1\pipe\VmHost)"),
                                     std::wstring(LR"(C:\VmHost:stream)"),
                                     std::wstring(LR"(C:\windows\regedit.exe:VmHost:$DATA)"),
                                     std::wstring(LR"(C:\VmHost\con)"),
                                     std::wstring(LR"(C:\con\VmHost.dll)"),
                                     std::wstring(L"con"),
                                     std::wstring(L"nul.VmHost"),
                                     std::wstring(L"COM1:VmHost.exe"),
                                     std::wstring(LR"(C:\aux.VmHost.exe /x)"),
                                     std::wstring(L"\"C:\\VmHost"),
                                     std::wstring(L"\""),
                                     std::wstring(L"\"\"VmHost\"\""),
                                     std::wstring(L"%VmHost%%PATH%%PATH%%PATH%%PATH%"),
                                     std::wstring(L"%SystemRoot%\\%SystemRoot%\\VmHost.dll"),
                                     std::wstring(L"%systemroot%%systemroot%VmHost.exe -"),
                                     longest,
                                     L"C:\\VmHost\\" + std::wstring(235, L'.'),
                                     L"C:\\" + std::wstring(240, L'\\') + L"VmHost",
                                     std::wstring(LR"(C:\VmHost\..\..\..\..\windows\gone.dll)"),
                                     std::wstring(L"[F00000000][VmHost"),
                                     std::wstring(L",FileRenameShortToLong C:\\VmHost"),
                                     std::wstring(L"file:///file://C:\\VmHost.dll"),
                                     std::wstring(L"@@@@C:\\VmHost,-1"),
                                     std::wstring(L"*.VmHost"),
                                     std::wstring(L"<VmHost>|?"),
                                     std::wstring(LR"(C:\*VmHost?\x.dll)")})
        values.push_back(TextValue({}, text));
    PlantInTurn(registry, values);
}
