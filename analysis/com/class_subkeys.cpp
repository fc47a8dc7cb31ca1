#include <string>

#include "analysis/com/com_areas.h"
#include "analysis/com/com_checks.h"
#include "registry/class_reference.h"
#include "registry/file_reference.h"
#include "registry/key_tree.h"

namespace {

enum class Emptiness { NotTested, WholeTree, NoSubkeys };
enum class DefaultTest {
    Module,          // data that name no file
    RequiredModule,  // the same, or empty data
    EmptyText,       // empty data
    ProgId,          // data that name no key
};

struct Family {
    const char* name;
    Emptiness emptiness;
    DefaultTest test;

    [[nodiscard]] Reason ReasonOfEmptiness() const {
        return emptiness == Emptiness::NoSubkeys ? reasons::kNoSubkeys : reasons::kNothingInTree;
    }
};

constexpr Family kFamilies[] = {
    {"InprocHandler", Emptiness::WholeTree, DefaultTest::Module},
    {"InprocHandler32", Emptiness::WholeTree, DefaultTest::Module},
    {"InprocServer", Emptiness::WholeTree, DefaultTest::Module},
    {"InprocServer32", Emptiness::NotTested, DefaultTest::RequiredModule},
    {"LocalServer", Emptiness::WholeTree, DefaultTest::Module},
    {"LocalServer32", Emptiness::WholeTree, DefaultTest::Module},
    {"DefaultIcon", Emptiness::WholeTree, DefaultTest::Module},
    {"ShellEx", Emptiness::NoSubkeys, DefaultTest::Module},
    {"ToolBoxBitmap32", Emptiness::NotTested, DefaultTest::EmptyText},
    {"ProgID", Emptiness::NotTested, DefaultTest::ProgId},
};

const Family* FindFamily(const char* name) {
    for (const Family& family : kFamilies)
        if (::lstrcmpiA(name, family.name) == 0) return &family;
    return nullptr;
}

bool IsEmpty(const Family& family, HKEY key, const std::string& path) {
    switch (family.emptiness) {
        case Emptiness::WholeTree:
            return KeyTreeIsEmpty(key, path, &PollCancel);
        case Emptiness::NoSubkeys:
            return HasNoSubkeys(key);
        case Emptiness::NotTested:
            break;
    }
    return false;
}

bool IsDead(DefaultTest test, const char* data) {
    const bool isEmpty = data[0] == '\0';
    switch (test) {
        case DefaultTest::Module:
            return !isEmpty && !CommandFileExists(data);
        case DefaultTest::RequiredModule:
            return isEmpty || !CommandFileExists(data);
        case DefaultTest::EmptyText:
            return isEmpty;
        case DefaultTest::ProgId:
            return !isEmpty && ClassesKeyMissing(data, MissingRule::LenientAllAccess);
    }
    return false;
}

Reason ReasonOfDeath(DefaultTest test, const char* data) {
    if (data[0] == '\0') return reasons::kNoData;
    return test == DefaultTest::ProgId ? reasons::kProgIdMissing : reasons::kModuleMissing;
}

/// Walks the values up to the default value; behind the last value, an empty default value is judged.
void CheckFamilyKey(const Family& family, HKEY key, const Subkey& subkey) {
    CValueReader value = WholeValues();
    CWalkEnd end(CWalkEnd::Of::Values);
    for (DWORD index = 0;; ++index) {
        PollCancel();
        const LSTATUS result = value.Read(key, index);
        if (result != ERROR_SUCCESS && result != ERROR_NO_MORE_ITEMS) {
            if (end.IsReached(key, index, result)) return;
            continue;
        }
        // Deliberate: once in every round, with the name and data of that round.
        if (IsEmpty(family, key, subkey.path))
            subkey.Report(family.ReasonOfEmptiness(), value.Name(), value.Data());
        if (value.HasName()) continue;
        if (IsDead(family.test, value.Data()))
            subkey.Report(ReasonOfDeath(family.test, value.Data()), "", value.Data());
        return;
    }
}

void CheckClass(const Subkey& entry) {
    const CUniqueKey classKey = OpenForAll(entry.parent, entry.name);
    if (!classKey) return;
    ForEachSubkeyOf(
        classKey.Get(), entry.path,
        [&entry](Subkey subkey) {
            const Family* family = FindFamily(subkey.name);
            if (family == nullptr) return;
            const CUniqueKey key = OpenForAll(subkey.parent, subkey.name);
            if (!key) return;
            subkey.writeTime = entry.writeTime;  // rows of a class show the class's own time
            CheckFamilyKey(*family, key.Get(), subkey);
        },
        kInnerWalk);
}

}  // namespace

void CheckClassSubkeys() { ForEachSubkey(kClassIds, &CheckClass); }
