#include "tests/hostile/hostile_registry.h"
#include "tests/support/native_calls.h"

namespace {

constexpr wchar_t kGone[] = LR"(C:\VmHost\gone.dll)";
constexpr int kDeepest = 512;

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

HKEY AddRoot(CHostileRegistry& registry, const Root& root, const std::wstring& name) {
    const HKEY key = registry.AddKey(registry.Area(root.root, root.area), name);
    return *root.inner == L'\0' ? key : registry.AddKey(key, root.inner);
}

}  // namespace

void PlantTrees(CHostileRegistry& registry) {
    const std::wstring zero(1, L'\0');
    for (const Root& root : kRoots) {
        AddChain(registry, AddRoot(registry, root, L"VmHostDeep"), kDeepest - 20, L"k");
        const HKEY full = AddChain(registry, AddRoot(registry, root, L"VmHostFull"), kDeepest - 20, L"k");
        registry.SetValue(full, TextValue(L"x", kGone));
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
}
