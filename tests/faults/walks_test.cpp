#include <doctest/doctest.h>

#include "analysis/deep_scan.h"
#include "hives/hive_list.h"
#include "registry/key_tree.h"
#include "registry/value_reader.h"
#include "repair/key_deletion.h"
#include "tests/faults/fault.h"
#include "tests/support/call_hook.h"
#include "tests/support/planted_hives.h"
#include "tests/support/recording_view.h"
#include "tests/support/scratch_key.h"

namespace {

Fault From(const char* function, long first, long last = kForEver, DWORD code = ERROR_ACCESS_DENIED) {
    return {&FaultFunctionNamed(function), first, last, code};
}

/// Does something while calls fail. @return its result.
template <class Work>
auto With(const Fault& fault, Work work) {
    const CFaultInForce inForce(&fault);
    return work();
}

void GoOn() {}

bool IsEmpty(const CScratchKey& key) { return KeyTreeIsEmpty(key.Get(), key.Path(), &GoOn); }

struct ManyValues {
    ManyValues() {
        for (int number = 0; number < 200; ++number)
            SetText(key.Get(), "v" + std::to_string(number), "C:\\gone\\a.dll");
    }
    CScratchKey key;
};

/// Another program makes a value larger whenever its size has been asked for.
struct GrowingText {
    static inline FARPROC before = nullptr;
    static inline int tries = 0;

    static LSTATUS WINAPI Query(HKEY key, LPCSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD bytes) {
        if (data != nullptr && ++tries < 1000) return ERROR_MORE_DATA;
        const auto query = reinterpret_cast<decltype(&::RegQueryValueExA)>(reinterpret_cast<void*>(before));
        return query(key, name, nullptr, type, data, bytes);
    }
};

}  // namespace

TEST_CASE("a tree that cannot be read is not taken for an empty one") {
    CScratchKey key;
    key.Add("sub");
    CHECK(IsEmpty(key));
    for (const char* function : {"RegEnumValueA", "RegEnumKeyExA"}) {
        CAPTURE(std::string(function));
        CHECK_FALSE(With(From(function, 1), [&] { return IsEmpty(key); }));
        CHECK_FALSE(HasRunWild());
        CHECK(With(From(function, 1, 10), [&] { return IsEmpty(key); }));
    }
}

TEST_CASE("what lies behind many indexes that fail is found all the same") {
    const ManyValues many;
    CRecordingView view;
    const auto rowsWith = [&](const Fault& fault) {
        view.Forget();
        CHECK(With(fault, [&] {
                  return view.Run([&] { ScanHiveForDeadFiles(many.key.Get(), many.key.Path().c_str()); });
              }).inTime);
        return view.Rows().size();
    };
    CHECK(rowsWith(From("RegEnumValueA", 1, 150)) == 50);
    CHECK(rowsWith(From("RegEnumValueA", 1, 199, ERROR_MORE_DATA)) == 1);
    CHECK(rowsWith(From("RegEnumValueA", 51)) == 50);
    CHECK(view.Progress().size() < 400);
}

TEST_CASE("a walk without failures asks a key for nothing more") {
    const ManyValues many;
    const FaultFunction& query = FaultFunctionNamed("RegQueryInfoKeyA");
    const auto find = [&] { return FindValueNamed(many.key.Get(), "none", &GoOn); };
    CHECK(With(From("RegSaveKeyA", 1), find) == ERROR_FILE_NOT_FOUND);
    CHECK(query.state->calls == 0);
    CHECK(With(From("RegEnumValueA", 1, 150), find) == ERROR_FILE_NOT_FOUND);
    CHECK(query.state->calls == 2);
    CHECK(With(From("RegEnumValueA", 1), find) == ERROR_ACCESS_DENIED);
    CHECK(query.state->calls == 4);
}

TEST_CASE("a key does not hold one value only when its values cannot be read") {
    const CScratchKey key;
    SetText(key.Get(), "one", "x");
    CHECK(KeyHoldsOneValueOnly(key.Get()));
    CHECK_FALSE(With(From("RegEnumValueA", 1), [&] { return KeyHoldsOneValueOnly(key.Get()); }));
}

TEST_CASE("a text that is larger at each try is given up") {
    const CScratchKey key;
    SetText(key.Get(), "x", std::string(1000, 'x'));
    CHECK(QueryWholeText(key.Get(), "x").text.size() == 1000);
    GrowingText::tries = 0;
    const CCallHook hook("RegQueryValueExA",
                         reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&GrowingText::Query)),
                         &GrowingText::before);
    const QueriedText query = QueryWholeText(key.Get(), "x");
    CHECK(GrowingText::tries < 20);
    CHECK(query.result == ERROR_MORE_DATA);
    CHECK(query.text.empty());
}

TEST_CASE("a hive list that breaks off is not taken for a whole one") {
    CPlantedHives hives;
    hives.AddMachine("VellumorA");
    hives.AddMachine("VellumorB");
    const auto countWith = [](const Fault& fault, bool isComplete) {
        CHiveList list;
        std::size_t count = 0;
        With(fault, [&] {
            REQUIRE(list.Open());
            while (list.Next().has_value()) ++count;
            return 0;
        });
        CHECK(list.IsComplete() == isComplete);
        return count;
    };
    CHECK(countWith(From("RegSaveKeyA", 1), true) == 2);
    CHECK(countWith(From("RegEnumValueA", 1, 1), true) == 1);
    CHECK(countWith(From("RegEnumValueA", 2), false) == 1);
    CHECK(countWith(From("RegEnumValueA", 2, 2, ERROR_INVALID_HANDLE), false) == 1);
    CHECK(countWith(From("RegEnumValueA", 2, 2, ERROR_KEY_DELETED), false) == 1);
}
