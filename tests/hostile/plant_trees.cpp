#include <algorithm>
#include <string_view>

#include "tests/driver/wait.h"
#include "tests/hostile/hostile_registry.h"
#include "tests/support/native_calls.h"

namespace {

constexpr wchar_t kGone[] = LR"(C:\VmHost\gone.dll)";
constexpr int kDeepest = 512;  // levels below a root that Windows allows

/// Makes a chain of subkeys. @return the last one.
HKEY AddChain(CHostileRegistry& registry, HKEY key, int levels, const std::wstring& name) {
    for (int level = 0; level < levels; ++level) key = registry.AddKey(key, name);
    return key;
}

/// Makes a chain in which every level has further subkeys whose names read like that of the first.
void AddTwins(CHostileRegistry& registry, HKEY key, int levels, const std::vector<std::wstring>& twins) {
    for (int level = 0; level < levels; ++level) {
        for (const std::wstring& twin : twins) registry.AddKey(key, twin);
        key = registry.AddKey(key, L"a");
    }
}

struct Root {
    HKEY root;
    const wchar_t* area;
    const wchar_t* inner;  // a key that checks ask for emptiness
};
const Root kRoots[] = {{HKEY_CURRENT_USER, L"Software", L""},
                       {HKEY_CLASSES_ROOT, L"CLSID", L"InprocHandler32"},
                       {HKEY_CLASSES_ROOT, L"Interface", L"TypeLib"},
                       {HKEY_CLASSES_ROOT, LR"(MIME\Database\Content Type)", L""}};

/// How deep the key that AddRoot makes lies below its root.
int LevelsOf(const Root& root) {
    const std::wstring_view area = root.area;
    const auto parents = std::count(area.begin(), area.end(), L'\\') + 1;
    return static_cast<int>(parents) + (*root.inner == L'\0' ? 1 : 2);
}

HKEY AddRoot(CHostileRegistry& registry, const Root& root, const std::wstring& name) {
    const HKEY key = registry.AddKey(registry.Area(root.root, root.area), name);
    return *root.inner == L'\0' ? key : registry.AddKey(key, root.inner);
}

/// Opens a key as programs do. @throws CDriverError unless it refuses what it does not grant, and only that.
void DemandRefusals(HKEY area, const wchar_t* name, REGSAM granted) {
    constexpr REGSAM kKeyRights = 0xFFFF;  // the platform does not keep the others, as the right to delete
    for (const REGSAM wanted : {REGSAM{KEY_READ}, REGSAM{KEY_WRITE}, REGSAM{KEY_ALL_ACCESS}}) {
        CUniqueKey key;
        const LSTATUS opened = ::RegOpenKeyExW(area, name, 0, wanted, key.Receive());
        const bool isGranted = (wanted & kKeyRights & ~granted) == 0;
        if (opened != (isGranted ? ERROR_SUCCESS : ERROR_ACCESS_DENIED))
            throw CDriverError(Narrow(name) + " answers " + std::to_string(opened) + " to " +
                               std::to_string(wanted));
    }
}

}  // namespace

void PlantTrees(CHostileRegistry& registry) {
    const std::wstring zero(1, L'\0');
    for (const Root& root : kRoots) {
        const int levels = kDeepest - LevelsOf(root);
        AddChain(registry, AddRoot(registry, root, L"VmHostDeep"), levels, L"k");
        registry.SetValue(AddChain(registry, AddRoot(registry, root, L"VmHostFull"), levels, L"k"),
                          TextValue(L"x", kGone));
        // Where the platform allows one level more than Windows does, nothing looks so deep.
        const HKEY deeper = AddChain(registry, AddRoot(registry, root, L"VmHostDeeper"), levels, L"k");
        if (const CUniqueKey deepest = CreateRaw(deeper, L"k"))
            registry.SetValue(deepest.Get(), TextValue(L"x", kGone));
        AddChain(registry, AddRoot(registry, root, L"VmHostLong"), 30, std::wstring(255, L'n'));
        AddTwins(registry, AddRoot(registry, root, L"VmHostZeros"), 40, {L"a" + zero, L"a" + zero + L"x"});
        AddTwins(registry, AddRoot(registry, root, L"VmHostTwins"), 40, {L"\xFF41", L"\xFF21"});
        AddTwins(registry, AddRoot(registry, root, L"VmHostSlashes"), 60,
                 {L"a\xFF3C",
                  L"a\xFF3C"
                  L"a"});
        AddTwins(registry, AddRoot(registry, root, L"VmHostNameless"), 40, {zero, zero + zero});
    }
}

void PlantLinks(CHostileRegistry& registry) {
    for (const Root& root : kRoots) {
        const HKEY key = AddRoot(registry, root, L"VmHostLinks");
        const std::wstring name = ObjectName(key);
        registry.AddLink(key, L"self", name + L"\\self");
        registry.AddLink(key, L"up1", name);
        registry.AddLink(key, L"up2", name);
        registry.AddLink(key, L"nowhere", name + L"\\gone");
        registry.AddLink(key, L"abroad", LR"(\Registry\Machine\Software\VmHostForeign)");
        registry.AddLink(key, L"empty", L"");
        registry.AddLink(key, L"there", name + L"\\back");
        registry.AddLink(key, L"back", name + L"\\there");
        // Each leads twice to the next one.
        for (int step = 0; step < 40; ++step) {
            const std::wstring number = std::to_wstring(step);
            const HKEY from = registry.AddKey(key, L"step" + number);
            for (const wchar_t* way : {L"l", L"r"})
                registry.AddLink(from, way, name + L"\\step" + std::to_wstring(step + 1));
        }
    }
    const HKEY target = registry.AddKey(registry.Area(HKEY_CURRENT_USER, L"Software"), L"VmHostTarget");
    for (const SubkeyList& list : SubkeyLists()) {
        registry.SetValue(target, TextValue(list.valueName, kGone));
        const HKEY area = registry.Area(list.root, list.area);
        if (OpenRaw(area, L"VmHostSelf", KEY_READ)) continue;  // several checks look at one list
        registry.AddLink(area, L"VmHostSelf", ObjectName(area) + L"\\VmHostSelf");
        registry.AddLink(area, L"VmHostUp", ObjectName(area));
        registry.AddLink(area, L"VmHostAway", ObjectName(target));
    }
}

void PlantRights(CHostileRegistry& registry) {
    struct Rights {
        const wchar_t* name;
        REGSAM rights;
    };
    constexpr Rights kRights[] = {{L"VmHostNone", 0},
                                  {L"VmHostRead", KEY_READ},
                                  {L"VmHostWrite", KEY_WRITE},
                                  {L"VmHostNoDelete", KEY_ALL_ACCESS & ~static_cast<REGSAM>(DELETE)},
                                  {L"VmHostQuery", KEY_QUERY_VALUE},
                                  {L"VmHostList", KEY_ENUMERATE_SUB_KEYS}};
    for (const SubkeyList& list : SubkeyLists())
        for (const Rights& rights : kRights) registry.PlantSubkey(list, rights.name, TextValue({}, kGone));
    for (const SubkeyList& list : SubkeyLists())
        for (const Rights& rights : kRights) {
            CUniqueKey key = OpenRaw(registry.Area(list.root, list.area), rights.name, KEY_ALL_ACCESS);
            // Where several checks look at one list, the key refuses already.
            if (key) registry.Restrict(std::move(key), rights.rights);
        }
    for (const SubkeyList& list : SubkeyLists())
        for (const Rights& rights : kRights)
            DemandRefusals(registry.Area(list.root, list.area), rights.name, rights.rights);
}
